#pragma once
// A preview control on a parent, blocks and drawings to show in it, and a user's mouse.

#include "db/block_table.h"
#include "db/curves.h"
#include "module/palette/palette_fixture.h"
#include "module/previews/recording_graphics.h"
#include "previews/gs_preview_ctrl.h"

#include <memory>

class PreviewTest : public PaletteTest {
protected:
    static constexpr int kWidth = 200;
    static constexpr int kHeight = 100;
    using Button = vndk::screen::MouseButton;

    PreviewTest() {
        host.setAlert([this](std::string_view text) { alerts.emplace_back(text); });
    }
    ~PreviewTest() override { ctrl.reset(); }

    /// Puts a control onto the parent.
    void make(std::unique_ptr<CGsPreviewCtrl> made = std::make_unique<CGsPreviewCtrl>()) {
        ctrl = std::move(made);
        ASSERT_TRUE(ctrl->Create("", WS_CHILD | WS_VISIBLE, CRect(10, 20, 10 + kWidth, 20 + kHeight), &parent, 1100));
        settle();
    }

    AcDbDatabase& database() { return *host.documents().curDocument()->database(); }

    void addBlock(const char* name, const std::vector<std::pair<AcGePoint3d, AcGePoint3d>>& lines) {
        const AcDbObjectPointer<AcDbBlockTable> table(database().blockTableId(), AcDb::kForWrite);
        auto* const record = new AcDbBlockTableRecord;
        record->setName(name);
        AcDbObjectId id;
        ASSERT_EQ(table->add(id, record), Acad::eOk);
        for (const auto& [from, to] : lines) {
            auto* const line = new AcDbLine(from, to);
            ASSERT_EQ(record->appendAcDbEntity(id, line), Acad::eOk);
            line->close();
        }
        record->close();
    }

    /// A drawing in the DOS form, with a line from 0,0 to 40,30.
    std::string drawing(const char* name) {
        host.runText("LINE 0,0 40,30\n\n");
        EXPECT_EQ(database().saveAs((folder / (std::string("t/") + name)).c_str()), Acad::eOk);
        host.runText("U\n");
        return std::string("T:\\") + name;
    }

    /// A point of the control, on the screen.
    POINT at(int x, int y) const { return onScreen(ctrl->m_hWnd, x, y); }
    void hold(int x, int y, Button button = Button::left) {
        user.moveTo(at(x, y).x, at(x, y).y);
        user.press(button);
        settle();
    }
    void move(int x, int y) {
        user.moveTo(at(x, y).x, at(x, y).y);
        settle();
    }
    void release(Button button = Button::left) {
        user.release(button);
        settle();
    }

    /// The calls since the last time, without those that every redraw makes.
    static std::vector<std::string> steps(GraphicsLog& log) {
        std::vector<std::string> calls = log.take();
        std::erase_if(calls,
                      [](const std::string& call) { return call == "view.invalidate" || call == "view.update"; });
        return calls;
    }

    std::unique_ptr<CGsPreviewCtrl> ctrl;
    std::vector<std::string> alerts;
};

/// With a graphics system that keeps what it is asked.
class PreviewCallsTest : public PreviewTest {
protected:
    PreviewCallsTest() {
        make();
        addBlock("DOOR", {{{1, 2, 0}, {5, 2, 0}}, {{5, 2, 3}, {5, 8, 3}}});
    }
    ~PreviewCallsTest() override {
        ctrl.reset();
        EXPECT_EQ(graphics.log.alive, 0) << "everything is given back";
    }
    void show(int mode) {
        ctrl->LoadBlock("DOOR");
        ctrl->mMode = mode;
        settle();
        graphics.log.take();
    }

    RecordingGraphics graphics;
};
