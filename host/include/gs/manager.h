// The graphics system's door: devices, views and models are made and given back here.
#pragma once

#include "gs/device.h"
#include "gs/model.h"
#include "gs/view.h"

/// Makes views and models without a device.
class AcGsClassFactory {
public:
    /// The first argument is null, the second false: neither means anything here.
    virtual AcGsView* createView(AcGsView* copied = nullptr, bool clientManaged = false) = 0;
    /// Takes the view off its device. Null is accepted, as by all that give back.
    virtual void deleteView(AcGsView* view) = 0;
    /// All types of models are alike, and no function is called back.
    virtual AcGsModel* createModel(int type, int flags = 0, void* getObject = nullptr,
                                   void* releaseObject = nullptr) = 0;
    virtual void deleteModel(AcGsModel* model) = 0;

protected:
    ~AcGsClassFactory() = default;
};

class AcGsManager {
public:
    virtual AcGsClassFactory* getGSClassFactory() = 0;
    /// Draws into the window. The caller tells the size by onSize, and gives the device back before the window goes.
    virtual AcGsDevice* createAutoCADDevice(HWND window) = 0;
    /// Draws into a picture alone.
    virtual AcGsDevice* createAutoCADOffScreenDevice() = 0;
    /// Takes its views off.
    virtual void destroyAutoCADDevice(AcGsDevice* device) = 0;
    virtual AcGsModel* createAutoCADModel() = 0;
    virtual void destroyAutoCADModel(AcGsModel* model) = 0;

protected:
    ~AcGsManager() = default;
};

/// The manager, never null; the argument is null.
AcGsManager* acgsGetGsManager(void* view = nullptr);
/// Puts another manager in its place, which stays the caller's; null brings back the system's own. The former one, null
/// for the own. What a manager has made is given back to that manager.
AcGsManager* acgsSetGsManager(AcGsManager* manager);
