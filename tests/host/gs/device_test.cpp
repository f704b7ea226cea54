// A device in a window.
#include "host/gs/gs_fixture.h"
#include "support/desktop_fixture.h"

namespace {

class DeviceTest : public vndk::test::DesktopFixture {
protected:
    static constexpr std::uint32_t kRed = 0xFF0000, kNavy = 0x000080;

    DeviceTest() {
        const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForWrite);
        auto* const line = new AcDbLine({0, 30.5, 0}, {60, 30.5, 0});
        line->setColorIndex(1);
        AcDbObjectId id;
        EXPECT_EQ(space->appendAcDbEntity(id, line), Acad::eOk);
        line->close();
        view->setView({30, 30, 1}, {30, 30, 0}, AcGeVector3d::kYAxis, 60, 60);
        EXPECT_TRUE(view->add(space.object(), model));
    }
    ~DeviceTest() override {
        manager.getGSClassFactory()->deleteView(view);
        manager.destroyAutoCADModel(model);
    }

    AcGsManager& manager = *acgsGetGsManager();
    AcDbDatabase database{true, true};
    AcGsModel* const model = manager.createAutoCADModel();
    AcGsView* const view = manager.getGSClassFactory()->createView();
};

} // namespace

TEST_F(DeviceTest, drawsIntoItsWindowAlone) {
    const HWND window =
        CreateWindowExA(0, "STATIC", "", WS_VISIBLE | WS_POPUP, 40, 50, 60, 60, nullptr, nullptr, nullptr, nullptr);
    settle();
    const std::uint32_t beside = pixel(39, 79);
    AcGsDevice* const device = manager.createAutoCADDevice(window);
    device->onSize(60, 60);
    device->setBackgroundColor(RGB(0, 0, 128));
    ASSERT_TRUE(device->add(view));
    view->update();
    settle();
    EXPECT_EQ(pixel(40, 79), kRed);
    EXPECT_EQ(pixel(99, 79), kRed);
    EXPECT_EQ(pixel(99, 78), kNavy);
    EXPECT_EQ(pixel(39, 79), beside);
    EXPECT_EQ(pixel(100, 79), beside);

    // A larger picture than the window is cut off by it; one that has moved is drawn where it is.
    SetWindowPos(window, nullptr, 100, 50, 30, 60, SWP_NOZORDER);
    settle();
    view->update();
    settle();
    EXPECT_EQ(pixel(100, 79), kRed);
    EXPECT_EQ(pixel(129, 79), kRed);
    EXPECT_EQ(pixel(130, 79), beside);
    DestroyWindow(window);
    view->update(); // it is drawn still, for nobody
    EXPECT_EQ(device->picture().at(0, 29), 0xFF000000 | kRed);
    manager.destroyAutoCADDevice(device);
}
