#include "previews/gs_preview_ctrl.h"

#include "ads/ads.h"
#include "db/block_table.h"
#include "frame/module.h"
#include "ge/line_seg3d.h"
#include "insertion/open_records.h"
#include "resources/resource.h"

#include <cmath>

namespace {

const char* const kModelSpace = "*Model_Space";
const char* const kNotFound = "Could not load the drawing file: ";
const char* const kNotLoaded = "Failed to load drawing.";
const char* const kTryAgain = "Error loading drawing.\n\nTry again?";

constexpr int kDenyWrite = 0x20;
constexpr int kGadgetModel = 2;
constexpr double kLeastField = 2e-11;

AcDbDatabase* WorkingDatabase() { return acdbHostApplicationServices()->workingDatabase(); }

double FieldSize(double dLeast, double dMost) {
    const double dSize = std::abs(dMost - dLeast);
    return dSize == 0 ? kLeastField : dSize;
}

} // namespace

CGsPreviewCtrl::CGsPreviewCtrl() {
    AcColorSettings colors;
    acedGetCurrentColors(&colors);
    mBackBrush = std::make_unique<CBrush>(colors.dwGfxModelBkColor);
}

CGsPreviewCtrl::~CGsPreviewCtrl() {
    try {
        if (mpView)
            mpView->eraseAll();
        if (mpManager && mpModel) {
            mpManager->destroyAutoCADModel(mpModel);
            mpModel = nullptr;
        }
        CGsPreviewCtrl::clearAll();
    } catch (...) {
        // Nothing is left to be done about it.
    }
}

// What is on show.

void CGsPreviewCtrl::SetUpGraphics(HINSTANCE hResources, bool bMakeModel) {
    mhZoomCursor = ::LoadCursor(hResources, MAKEINTRESOURCE(IDC_CURSOR_ZOOM));
    mhPanCursor = ::LoadCursor(hResources, MAKEINTRESOURCE(IDC_CURSOR_PAN));
    mhOrbitCursor = ::LoadCursor(hResources, MAKEINTRESOURCE(IDC_CURSOR_ORBIT));
    if (mpManager)
        return;
    CRect client;
    GetClientRect(client);
    mpManager = acgsGetGsManager(nullptr);
    mpFactory = mpManager->getGSClassFactory();
    mpDevice = mpManager->createAutoCADDevice(m_hWnd);
    mpDevice->onSize(client.Width(), client.Height());
    mpView = mpFactory->createView(nullptr, false);
    if (bMakeModel) {
        mpModel = mpManager->createAutoCADModel();
        mOwnsModel = 1;
    }
    mpDirectModel = mpFactory->createModel(kGadgetModel, 0, nullptr, nullptr);
    mpView->add(&mGadget, mpDirectModel);
    mGadget.SetView(mpView);
    mpDevice->add(mpView);
    mpView->setView(AcGePoint3d(0, 0, 1), AcGePoint3d::kOrigin, AcGeVector3d::kYAxis, 1.0, 1.0, AcGsView::kParallel);
}

void CGsPreviewCtrl::clearAll() {
    mShownName.Empty();
    try {
        if (mpView)
            mpView->eraseAll();
        if (mpDevice && mpView)
            mpDevice->erase(mpView);
        if (mpFactory && mpView) {
            mpFactory->deleteView(mpView);
            mpView = nullptr;
        }
        if (mpFactory && mpDirectModel) {
            mpFactory->deleteModel(mpDirectModel);
            mpDirectModel = nullptr;
        }
        mpFactory = nullptr;
        if (mOwnsModel && mpManager && mpModel)
            mpManager->destroyAutoCADModel(mpModel);
        mpModel = nullptr;
        if (mpManager && mpDevice)
            mpManager->destroyAutoCADDevice(mpDevice);
        mpDevice = nullptr;
        mpManager = nullptr;
    } catch (...) {
        // What the graphics system doesn't take back is lost to us.
    }
    mGadget.SetView(nullptr);
}

void CGsPreviewCtrl::LoadDrawing(CString strPath) {
    strPath.Replace("\\", "/");
    strPath.Replace("//", "/");
    char found[512];
    if (acedFindFile(strPath, found) != RTNORM) {
        acedAlert(kNotFound + strPath);
        return;
    }
    try {
        clearAll();
    } catch (...) {
        acedAlert("clearAll failed");
        CGsPreviewCtrl::clearAll(); // the view must not outlive what it shows
    }
    mpDatabase.reset();
    mDrawingPath.Empty();
    mShownName = kModelSpace;
    try {
        ReadDrawing(found);
    } catch (...) {
        // What could be told has been told.
    }
}

void CGsPreviewCtrl::ReadDrawing(const CString& strPath) {
    mpDatabase = std::make_unique<AcDbDatabase>(false, true);
    try {
        if (mpDatabase->readDwgFile(strPath, kDenyWrite, false) != Acad::eOk) {
            mpDatabase.reset();
            mShownName.Empty();
            acedAlert(kNotLoaded);
            acedAlert(kNotFound + strPath);
            return;
        }
    } catch (...) {
        mpDatabase.reset();
        mShownName.Empty();
        acedAlert(kNotLoaded);
        return;
    }
    mDrawingPath = strPath;
    AcDbBlockTableRecord* pRecord = OpenRecord(mpDatabase.get(), kModelSpace);
    if (!pRecord) {
        mpDatabase.reset();
        mDrawingPath.Empty();
        mShownName.Empty();
        acedAlert(kNotLoaded);
        return;
    }
    SetUpView(pRecord, true);
}

void CGsPreviewCtrl::LoadBlock(CString strName) {
    try {
        clearAll();
        if (mpDatabase && mDrawingPath.IsEmpty())
            mpDatabase.reset();
        if (strName.IsEmpty())
            return;
        AcDbDatabase* pDatabase = mpDatabase ? mpDatabase.get() : WorkingDatabase();
        AcDbBlockTableRecord* pRecord = pDatabase ? OpenRecord(pDatabase, strName) : nullptr;
        if (!pRecord)
            return;
        mShownName = strName;
        SetUpView(pRecord, false);
    } catch (...) {
        mShownName.Empty();
    }
}

AcDbBlockTableRecord* CGsPreviewCtrl::OpenRecord(AcDbDatabase* pDatabase, const CString& strName) {
    AcDbBlockTable* pTable = nullptr;
    if (pDatabase->getSymbolTable(pTable, AcDb::kForRead) != Acad::eOk)
        return nullptr;
    const COpened<AcDbBlockTable> table(pTable);
    AcDbBlockTableRecord* pRecord = nullptr;
    if (!table->has(strName) || table->getAt(strName, pRecord, AcDb::kForRead, false) != Acad::eOk)
        return nullptr;
    return pRecord;
}

void CGsPreviewCtrl::SetUpView(AcDbBlockTableRecord* pRecord, bool bDrawing) {
    COpened<AcDbBlockTableRecord> record(pRecord);
    SetUpGraphics(ModuleInstance(), true);
    SetCamera(ExtentsOf(*pRecord));
    if (!bDrawing)
        mpView->zoom(1.0);
    ApplyRenderMode();
    if (!mpDatabase)
        mpView->eraseAll();
    mpView->add(pRecord, mpModel);
    record.Attach(nullptr);
    try {
        mpView->invalidate();
        mpView->update();
    } catch (...) {
        if (AfxMessageBox(kTryAgain, MB_YESNO | MB_ICONWARNING) == IDYES) {
            LoadDrawing(mDrawingPath);
            return;
        }
    }
    if (mShowGadget)
        DrawOrbitGadget(nullptr);
}

/// A drawing's are those that it was saved with: no entity is opened.
AcDbExtents CGsPreviewCtrl::ExtentsOf(const AcDbBlockTableRecord& record) const {
    AcDbExtents extents;
    if (mShownName == kModelSpace) {
        const AcDbDatabase* pDatabase = mpDatabase ? mpDatabase.get() : WorkingDatabase();
        extents.addPoint(pDatabase->extmax());
        extents.addPoint(pDatabase->extmin());
        return extents;
    }
    AcDbBlockTableRecordIterator* pIterator = nullptr;
    if (record.newIterator(pIterator, true, true) != Acad::eOk)
        return extents;
    const std::unique_ptr<AcDbBlockTableRecordIterator> iterator(pIterator);
    for (; !iterator->done(); iterator->step(true, true)) {
        AcDbEntity* pEntity = nullptr;
        if (iterator->getEntity(pEntity, AcDb::kForRead) != Acad::eOk)
            continue;
        AcDbExtents entityExtents;
        pEntity->getGeomExtents(entityExtents);
        extents.addExt(entityExtents);
        pEntity->close();
    }
    return extents;
}

/// From above, with all of the extents in the field and no margin.
void CGsPreviewCtrl::SetCamera(const AcDbExtents& extents) {
    const AcGeVector3d direction = AcGeVector3d::kZAxis.normal();
    const AcGeVector3d right = direction.perpVector().normal();
    const AcGeVector3d up = direction.crossProduct(right);
    const AcGePoint3d target = AcGeLineSeg3d(extents.maxPoint(), extents.minPoint()).midPoint();
    AcDbExtents seen = extents;
    seen.transformBy(AcGeMatrix3d::alignCoordSys(target, AcGeVector3d::kXAxis, AcGeVector3d::kYAxis,
                                                 AcGeVector3d::kZAxis, target, right, up, direction)
                         .inverse());
    mpView->setView(target + direction, target, up, FieldSize(seen.minPoint().x, seen.maxPoint().x),
                    FieldSize(seen.minPoint().y, seen.maxPoint().y), AcGsView::kParallel);
}

void CGsPreviewCtrl::ApplyRenderMode() {
    if (mRenderMode >= AcGsView::k2DOptimized && mRenderMode <= AcGsView::kLastRenderMode)
        mpView->setMode(static_cast<AcGsView::RenderMode>(mRenderMode));
}
