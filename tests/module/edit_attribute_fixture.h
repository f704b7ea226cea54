#pragma once
// The dialog "Edit Attribute" on a desktop in memory: blocks with attributes, and the steps of a user.

#include "mfc/afx.h"
#include "module/module_fixture.h"
#include "platform/temp_folder.h"
#include "screen/memory.h"
#include "win32/desktop.h"
#include "win32/user_script.h"

#include <functional>

class EditAttributeTest : public ModuleTest {
protected:
    static constexpr const char* kTitle = "Edit Attribute";
    static constexpr int kList = 220;
    static constexpr int kLabel = 222;
    static constexpr int kOk = 223;
    // Where the rows stand; a step that clicks asks first whether it is so.
    static constexpr int kFirstRow = 17, kRowHeight = 17;

    EditAttributeTest() {
        application.SetProfileFile((folder / "profile.ini").c_str());
        application.WriteProfileInt("Vondrake", "DoNotShow", 1);
        EXPECT_TRUE(frame.CreateEx(0, AfxRegisterWndClass(0), "frame", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 800, 600,
                                   nullptr, nullptr));
        host.setMainWindow(frame.m_hWnd);
    }
    ~EditAttributeTest() override {
        host.setMainWindow(nullptr);
        frame.DestroyWindow();
    }

    void SetUp() override {
        ModuleTest::SetUp();
        block = addBlock("DESK");
    }

    AcDbObjectId define(const char* tag, const char* text,
                        const std::function<void(AcDbAttributeDefinition&)>& more = {}) {
        auto* const definition = new AcDbAttributeDefinition({}, text, tag, (std::string(tag) + "?").c_str());
        definition->setHeight(2.5);
        if (more)
            more(*definition);
        return append(block, definition);
    }

    /// A plain reference whose attributes have these tags and values, made without looking at the definitions.
    AcDbObjectId addPlain(const std::vector<std::pair<const char*, const char*>>& attributes, AcGePoint3d at = {}) {
        const AcDbObjectId id = append(database().modelSpaceId(), new AcDbBlockReference(at, block));
        const AcDbObjectPointer<AcDbBlockReference> reference(id, AcDb::kForWrite);
        for (const auto& [tag, text] : attributes) {
            auto* const attribute = new AcDbAttribute(at, text, tag);
            EXPECT_EQ(reference->appendAttribute(attribute), Acad::eOk);
            attribute->close();
        }
        return id;
    }
    /// The same with an attribute for each definition of the block.
    AcDbObjectId addFromBlock() {
        const AcDbObjectId id = append(database().modelSpaceId(), new AcDbBlockReference({}, block));
        const AcDbObjectPointer<AcDbBlockReference> reference(id, AcDb::kForWrite);
        for (const AcDbObjectId each : entities(block)) {
            const AcDbObjectPointer<AcDbAttributeDefinition> definition(each);
            if (!definition)
                continue;
            auto* const attribute = new AcDbAttribute;
            attribute->setAttributeFromBlock(&*definition, AcGeMatrix3d());
            EXPECT_EQ(reference->appendAttribute(attribute), Acad::eOk);
            attribute->close();
        }
        return id;
    }
    AcDbObjectId addIntelligent() {
        run("(c:_bInsert \"DESK\" (list 0 0 0))");
        for (const AcDbObjectId id : modelSpace())
            if (AcDbObjectPointer<VNDKBlockReference>(id))
                return id;
        ADD_FAILURE() << "nothing was inserted";
        return {};
    }

    static std::vector<std::string> texts(AcDbObjectId referenceId) {
        std::vector<std::string> found;
        if (const AcDbObjectPointer<VNDKBlockReference> reference(referenceId); reference) {
            for (int i = 0; i < reference->attributeCount(); ++i)
                if (const AcDbObjectPointer<AcDbText> text(reference->getAttribute(i)); text)
                    found.push_back(text->textValue());
            return found;
        }
        const AcDbObjectPointer<AcDbBlockReference> reference(referenceId);
        for (const AcDbObjectId id : reference->attributes())
            if (const AcDbObjectPointer<AcDbText> text(id); text)
                found.push_back(text->textValue());
        return found;
    }
    static std::vector<std::string> defaults(AcDbObjectId referenceId) {
        std::vector<std::string> found;
        const AcDbObjectPointer<VNDKBlockReference> reference(referenceId);
        for (int i = 0; i < reference->attributeCount(); ++i)
            if (const AcDbObjectPointer<VNDKAttribute> attribute(reference->getAttribute(i)); attribute)
                found.push_back(attribute->defaultText());
        return found;
    }
    /// The attribute at that place, of either kind of reference.
    static AcDbObjectId attributeOf(AcDbObjectId referenceId, int index) {
        if (const AcDbObjectPointer<VNDKBlockReference> reference(referenceId); reference)
            return reference->getAttribute(index);
        return AcDbObjectPointer<AcDbBlockReference>(referenceId)->attributes().at(static_cast<size_t>(index));
    }

    // The dialog, seen from outside.

    static HWND dialog() { return ::FindWindowA(nullptr, kTitle); }
    static HWND listWindow() { return ::GetDlgItem(dialog(), kList); }
    static std::string cell(int row, int column) {
        char text[300] = "";
        ListView_GetItemText(listWindow(), row, column, text, sizeof text);
        return text;
    }
    /// What stands in the list, a row in each line: "prompt=value".
    static std::vector<std::string> rows() {
        std::vector<std::string> found;
        for (int row = 0; row < ListView_GetItemCount(listWindow()); ++row)
            found.push_back(cell(row, 0) + "=" + cell(row, 1));
        return found;
    }
    static std::string label() {
        char text[200] = "";
        ::GetDlgItemTextA(dialog(), kLabel, text, sizeof text);
        return text;
    }

    /// Clicks on the value of a row that is in view as long as nothing is scrolled.
    static void clickValue(vndk::win32::UserScript& user, int row) {
        const POINT point{150, kFirstRow + kRowHeight * row + kRowHeight / 2};
        user.expect("the row stands where it is clicked", [row, point] {
            RECT rect{LVIR_BOUNDS, 0, 0, 0};
            ::SendMessageA(listWindow(), LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&rect));
            return ::PtInRect(&rect, point) != FALSE;
        });
        user.clickAt(kList, point);
    }

    /// Runs lines while a user takes steps in the dialog; gives what the lines printed.
    std::string edit(const std::string& lines, const std::function<void(vndk::win32::UserScript&)>& steps) {
        vndk::win32::UserScript user(screen);
        user.in(kTitle).waitForWindow();
        steps(user);
        user.waitUntilGone();
        run(lines);
        EXPECT_TRUE(user.finish()) << user.failure();
        return output;
    }

    TempFolder folder;
    CWinApp application{"edit-attribute-test"};
    vndk::screen::MemoryScreen screen{800, 600};
    vndk::win32::Desktop desktop{screen};
    CFrameWnd frame;
    AcDbObjectId block;
};
