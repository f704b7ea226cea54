#include "gs/manager.h"

#include "gs/graphics_device.h"
#include "gs/graphics_model.h"
#include "gs/graphics_view.h"

#include <utility>

namespace vndk::gs {

namespace {

class ClassFactory final : public AcGsClassFactory {
public:
    AcGsView* createView(AcGsView* /*copied*/, bool /*clientManaged*/) override { return new GraphicsView; }
    void deleteView(AcGsView* view) override { delete view; }
    AcGsModel* createModel(int /*type*/, int /*flags*/, void* /*getObject*/, void* /*releaseObject*/) override {
        return new GraphicsModel;
    }
    void deleteModel(AcGsModel* model) override { delete model; }
};

class Manager final : public AcGsManager {
public:
    // Applications look the class of drawables up by its name.
    Manager() { AcGiDrawable::desc(); }
    AcGsClassFactory* getGSClassFactory() override { return &factory_; }
    AcGsDevice* createAutoCADDevice(HWND window) override { return new GraphicsDevice(window); }
    AcGsDevice* createAutoCADOffScreenDevice() override { return new GraphicsDevice(nullptr); }
    void destroyAutoCADDevice(AcGsDevice* device) override { delete device; }
    AcGsModel* createAutoCADModel() override { return new GraphicsModel; }
    void destroyAutoCADModel(AcGsModel* model) override { delete model; }

private:
    ClassFactory factory_;
};

} // namespace

} // namespace vndk::gs

static AcGsManager* g_replacement;

AcGsManager* acgsGetGsManager(void* /*view*/) {
    static vndk::gs::Manager manager;
    return g_replacement ? g_replacement : &manager;
}

AcGsManager* acgsSetGsManager(AcGsManager* manager) { return std::exchange(g_replacement, manager); }
