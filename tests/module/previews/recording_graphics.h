#pragma once
/// A graphics system that draws nothing and keeps what is asked of it, as text: "view.zoom(1.1)".

#include "gs/manager.h"

#include <cstdarg>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

/// What all parts of one system share.
struct GraphicsLog {
    std::vector<std::string> calls;
    int alive = 0;           ///< objects that were made and not given back
    int throwingUpdates = 0; ///< that many updates to come throw
    int throwingDevices = 0; ///< that many devices to come can't be made
    AcGsDCRect viewport{{0, 0}, {199, 99}};

    __attribute__((format(printf, 2, 3))) void add(const char* format, ...) {
        char text[512];
        va_list arguments;
        va_start(arguments, format);
        std::vsnprintf(text, sizeof text, format, arguments);
        va_end(arguments);
        calls.emplace_back(text);
    }
    std::vector<std::string> take() { return std::exchange(calls, {}); }
};

class RecordingModel final : public AcGsModel {
public:
    explicit RecordingModel(GraphicsLog& log) : log_(log) { ++log_.alive; }
    ~RecordingModel() override { --log_.alive; }
    void invalidate() override {}
    bool visibleExtents(AcDbObjectId, AcDbExtents&) override { return false; }

private:
    GraphicsLog& log_;
};

/// Its pixels are drawing units of the field, from the target on.
class RecordingView final : public AcGsView {
public:
    explicit RecordingView(GraphicsLog& log) : log_(log) { ++log_.alive; }
    ~RecordingView() override { --log_.alive; }

    void setView(const AcGePoint3d& position, const AcGePoint3d& target, const AcGeVector3d& up, double width,
                 double height, Projection projection) override {
        log_.add("view.setView(%g,%g,%g; %g,%g,%g; %g,%g,%g; %g, %g, %d)", position.x, position.y, position.z, target.x,
                 target.y, target.z, up.x, up.y, up.z, width, height, projection);
    }
    AcGePoint3d position() const override { return {}; }
    AcGePoint3d target() const override { return {}; }
    AcGeVector3d upVector() const override { return {}; }
    double fieldWidth() const override { return 1; }
    double fieldHeight() const override { return 1; }
    void getViewport(AcGsDCRect& rectangle) const override { rectangle = log_.viewport; }
    void setViewport(const AcGsDCRect&) override {}
    /// Turned by a quarter, and scaled by different factors, so that the order of the two matters.
    AcGeMatrix3d viewingMatrix() const override { return AcGeMatrix3d::rotation(kAcGePi / 2, AcGeVector3d::kZAxis); }
    AcGeMatrix3d worldToDeviceMatrix() const override {
        return AcGeMatrix3d::translation({50, 60, 0}) * AcGeMatrix3d::scaling(AcGeScale3d(2, -4, 1));
    }
    void dolly(const AcGeVector3d& step) override { log_.add("view.dolly(%.9g,%.9g,%.9g)", step.x, step.y, step.z); }
    void roll(double angle) override { log_.add("view.roll(%.9f)", angle); }
    void orbit(double x, double y) override { log_.add("view.orbit(%.9f, %.9f)", x, y); }
    void zoom(double factor) override { log_.add("view.zoom(%.9g)", factor); }
    void setMode(RenderMode mode) override { log_.add("view.setMode(%d)", mode); }
    RenderMode mode() const override { return k2DOptimized; }
    bool add(AcGiDrawable*, AcGsModel* model) override {
        log_.add("view.add(gadget%s)", model ? "" : ", null");
        return true;
    }
    bool add(const AcDbBlockTableRecord*, AcGsModel* model) override {
        log_.add("view.add(record%s)", model ? "" : ", null");
        return true;
    }
    bool erase(AcGiDrawable*) override { return true; }
    void eraseAll() override { log_.add("view.eraseAll"); }
    AcDbObjectId entityAt(const AcGsDCPoint&, int) override { return {}; }
    void entitiesIn(const AcGsDCRect&, bool, std::vector<AcDbObjectId>&) override {}
    void highlight(std::span<const AcDbObjectId>) override {}
    void setInteractive(bool) override {}
    bool isInteractive() const override { return false; }
    void invalidate() override { log_.add("view.invalidate"); }
    bool isValid() const override { return false; }
    void update() override {
        log_.add("view.update");
        if (log_.throwingUpdates > 0) {
            --log_.throwingUpdates;
            throw std::runtime_error("no picture");
        }
    }

private:
    GraphicsLog& log_;
};

class RecordingDevice final : public AcGsDevice {
public:
    explicit RecordingDevice(GraphicsLog& log) : log_(log) { ++log_.alive; }
    ~RecordingDevice() override { --log_.alive; }
    void onSize(int width, int height) override { log_.add("device.onSize(%d, %d)", width, height); }
    int width() const override { return 0; }
    int height() const override { return 0; }
    bool add(AcGsView*) override {
        log_.add("device.add");
        return true;
    }
    bool erase(AcGsView*) override {
        log_.add("device.erase");
        return true;
    }
    void eraseAll() override {}
    void setBackgroundColor(COLORREF) override {}
    COLORREF backgroundColor() const override { return 0; }
    void invalidate() override {}
    void update() override {}
    void present() override {}
    void paint(HDC, const RECT&) const override {}
    const vndk::win32::Picture& picture() const override { return picture_; }

private:
    GraphicsLog& log_;
    vndk::win32::Picture picture_;
};

/// Stands in the system's place as long as it lives.
class RecordingGraphics final : public AcGsManager, public AcGsClassFactory {
public:
    RecordingGraphics() : former_(acgsSetGsManager(this)) {}
    ~RecordingGraphics() { acgsSetGsManager(former_); }
    RecordingGraphics(const RecordingGraphics&) = delete;
    RecordingGraphics& operator=(const RecordingGraphics&) = delete;

    AcGsClassFactory* getGSClassFactory() override { return this; }
    AcGsDevice* createAutoCADDevice(HWND) override {
        log.add("manager.createAutoCADDevice");
        if (log.throwingDevices > 0) {
            --log.throwingDevices;
            throw std::runtime_error("no device");
        }
        return new RecordingDevice(log);
    }
    AcGsDevice* createAutoCADOffScreenDevice() override { return new RecordingDevice(log); }
    void destroyAutoCADDevice(AcGsDevice* device) override {
        log.add("manager.destroyAutoCADDevice");
        delete device;
    }
    AcGsModel* createAutoCADModel() override {
        log.add("manager.createAutoCADModel");
        return new RecordingModel(log);
    }
    void destroyAutoCADModel(AcGsModel* model) override {
        log.add("manager.destroyAutoCADModel");
        delete model;
    }
    AcGsView* createView(AcGsView* copied, bool clientManaged) override {
        log.add("factory.createView(%s, %d)", copied ? "view" : "null", clientManaged);
        return new RecordingView(log);
    }
    void deleteView(AcGsView* view) override {
        log.add("factory.deleteView");
        delete view;
    }
    AcGsModel* createModel(int type, int flags, void* getObject, void* releaseObject) override {
        log.add("factory.createModel(%d, %d%s)", type, flags, !getObject && !releaseObject ? ", null, null" : "");
        return new RecordingModel(log);
    }
    void deleteModel(AcGsModel* model) override {
        log.add("factory.deleteModel");
        delete model;
    }

    GraphicsLog log;

private:
    AcGsManager* former_;
};
