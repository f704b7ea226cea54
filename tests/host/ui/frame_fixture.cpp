#include "frame_fixture.h"

#include "db/block_table.h"
#include "db/curves.h"
#include "db/open.h"
#include "ui/command_window.h"
#include "win32/drive_map.h"

namespace vndk::test {

namespace {

constexpr UINT_PTR kLookTimer = 77;
constexpr UINT kLookEvery = 20; // milliseconds of the screen's clock

win32::UserScript* watched = nullptr;

std::string withoutCarriageReturns(std::string text) {
    std::erase(text, '\r');
    return text;
}

} // namespace

std::optional<std::string> MemoryProfile::read(std::string_view section, std::string_view key) {
    const auto found = values_.find(std::string(section) + "/" + std::string(key));
    return found != values_.end() ? std::optional(found->second) : std::nullopt;
}

void MemoryProfile::write(std::string_view section, std::string_view key, std::string_view value) {
    values_[std::string(section) + "/" + std::string(key)] = value;
}

FrameFixture::FrameFixture() {
    host_.setProfile(&profile_);
    EXPECT_TRUE(frame_.open());
    app_.m_pMainWnd = &frame_;
    host_.documents().appContextNewDocument(nullptr);
}

FrameFixture::~FrameFixture() {
    user_.reset();
    frame_.leave();
    app_.m_pMainWnd = nullptr;
    host_.documents().closeAll();
    host_.setProfile(nullptr);
}

win32::UserScript& FrameFixture::user() {
    if (!user_) {
        user_ = std::make_unique<win32::UserScript>(screen);
        user_->inWindow(frame_.m_hWnd);
    }
    return *user_;
}

/// Ends the loop when the user has nothing left to do, or can't do it.
void CALLBACK FrameFixture::look(HWND, UINT, UINT_PTR, DWORD) {
    if (watched && watched->done())
        PostQuitMessage(0);
}

void FrameFixture::play() {
    user().pause(2 * kLookEvery); // what the last step has begun ends
    watched = user_.get();
    frame_.SetTimer(kLookTimer, kLookEvery, &FrameFixture::look);
    frame_.run(app_);
    frame_.KillTimer(kLookTimer);
    watched = nullptr;
    EXPECT_EQ(user_->failure(), "");
    user_.reset();
}

std::size_t FrameFixture::entityCount() {
    const AcDbObjectPointer<AcDbBlockTableRecord> space(document().database()->modelSpaceId());
    AcDbBlockTableRecordIterator* found = nullptr;
    std::size_t count = 0;
    if (!space || space->newIterator(found) != Acad::eOk)
        return count;
    for (const std::unique_ptr<AcDbBlockTableRecordIterator> iterator(found); !iterator->done(); iterator->step())
        ++count;
    return count;
}

std::string FrameFixture::history() const {
    return withoutCarriageReturns(const_cast<host::MainFrame&>(frame_).commandWindow().history());
}

std::string FrameFixture::lineText() const {
    return const_cast<host::MainFrame&>(frame_).commandWindow().line().text();
}

std::string FrameFixture::title() const {
    CString text;
    frame_.GetWindowText(text);
    return std::string(text.View());
}

POINT FrameFixture::middleOf(HWND window) {
    RECT rect{};
    GetWindowRect(window, &rect);
    return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
}

std::string FrameFixture::savedDrawing(const std::string& name) {
    AcDbDatabase database;
    auto circle = std::make_unique<AcDbCircle>(AcGePoint3d(5, 5, 0), AcGeVector3d::kZAxis, 2.0);
    const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForWrite);
    AcDbObjectId id;
    if (space && space->appendAcDbEntity(id, circle.get()) == Acad::eOk)
        circle.release()->close();
    const std::string path = folder_ / name;
    EXPECT_EQ(database.saveAs(path.c_str()), Acad::eOk);
    return path;
}

} // namespace vndk::test
