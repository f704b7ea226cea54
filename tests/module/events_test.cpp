// The events of documents and drawings, with views that write down what reaches them. The reactors are built into this
// test, since the module's own can't be reached from outside.

#include "db/database.h"
#include "db/id_mapping.h"
#include "ed/host.h"
#include "frame/doc_data.h"
#include "frame/palette_bar.h"
#include "frame/palette_doc_reactor.h"
#include "frame/palette_editor_reactor.h"
#include "frame/palette_views.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>

/// The library's entry, which isn't called here, ends the palette.
void DestroyPaletteBar() {}

namespace {

class Views : public CBlockListView, public CPaletteView {
public:
    void Refresh() override { log += "refresh "; }
    void SelectTab(int nTab) override { log += "tab" + std::to_string(nTab) + " "; }
    void ShowActivePage() override { log += "page "; }
    std::string take() { return std::exchange(log, {}); }

private:
    std::string log;
};

class Events : public testing::Test {
protected:
    Events() {
        host.documents().addReactor(&DocDataManager());
        first = newDocument();
        DocDataManager().docData().AttachWatcher();
        host.editor().addReactor(&editorReactor);
    }
    ~Events() override {
        host.editor().removeReactor(&editorReactor);
        host.documents().removeReactor(&docReactor);
        while (AcApDocument* document = host.documents().curDocument())
            close(document);
        host.documents().removeReactor(&DocDataManager());
    }

    void openPalette() {
        editorReactor.SetPalette(&views);
        editorReactor.SetBlockList(&views);
        host.documents().addReactor(&docReactor);
    }
    AcApDocument* newDocument() {
        EXPECT_EQ(host.documents().appContextNewDocument(nullptr), Acad::eOk);
        return host.documents().curDocument();
    }
    void close(AcApDocument* document) {
        host.documents().closeDocument(document);
        host.documents().releaseClosed();
    }
    CDocData& dataOf(AcApDocument* document) { return DocDataManager().docData(document); }

    Views views;
    CPaletteEditorReactor editorReactor;
    CPaletteDocReactor docReactor{&views};
    vndk::host::Host host;
    AcApDocument* first = nullptr;
};

TEST_F(Events, DocumentsRefreshTheBlocksTab) {
    openPalette();
    AcApDocument* second = newDocument();
    EXPECT_NE(views.take(), "") << "the new document became active";
    host.documents().activateDocument(first);
    EXPECT_EQ(views.take(), "refresh ");
    close(second);
    EXPECT_NE(views.take().find("refresh "), std::string::npos) << "closing one drawing shows the other's blocks";
}

TEST_F(Events, ClosingADrawingTakesTheWatcherOfTheSurvivingOne) {
    openPalette();
    AcApDocument* second = newDocument();
    ASSERT_NE(dataOf(second).blockWatcher(), nullptr) << "watched from its creation on";
    ASSERT_NE(dataOf(first).blockWatcher(), nullptr);
    close(second);
    EXPECT_EQ(dataOf(first).blockWatcher(), nullptr);
}

TEST_F(Events, WatchersComeAndGoWithTheDocumentThatIsCurrent) {
    openPalette();
    AcApDocument* second = newDocument();
    dataOf(second).DetachWatcher();
    views.take();
    docReactor.documentCreated(first); // as told of one that isn't current
    EXPECT_NE(dataOf(second).blockWatcher(), nullptr);
    docReactor.documentCreated(nullptr);
    EXPECT_EQ(views.take(), "");
    docReactor.documentDestroyed("gone.dwg");
    EXPECT_EQ(dataOf(second).blockWatcher(), nullptr);
    EXPECT_NE(dataOf(first).blockWatcher(), nullptr);
    EXPECT_EQ(views.take(), "refresh ");
}

TEST_F(Events, WithoutAPaletteNewDocumentsAreNotWatched) {
    AcApDocument* second = newDocument();
    EXPECT_EQ(dataOf(second).blockWatcher(), nullptr);
    close(second);
    EXPECT_NE(dataOf(first).blockWatcher(), nullptr);
}

TEST_F(Events, AnEntryGoesWithItsDocument) {
    AcApDocument* second = newDocument();
    dataOf(second).AttachWatcher();
    close(second);
    // A later document may well lie where the closed one lay.
    EXPECT_EQ(dataOf(newDocument()).blockWatcher(), nullptr);
}

TEST_F(Events, DrawingEventsReachThePalette) {
    openPalette();
    AcDbDatabase& database = *first->database();
    AcDbIdMapping mapping(&database, &database);
    auto& events = acrxEventReactors();
    const struct {
        const char* what;
        std::function<void(AcRxEventReactor&)> event;
        const char* expected;
    } cases[] = {
        {"endInsert", [&](auto& r) { r.endInsert(&database); }, "refresh "},
        {"endInsert of nothing", [&](auto& r) { r.endInsert(nullptr); }, ""},
        {"endDeepClone", [&](auto& r) { r.endDeepClone(mapping); }, "refresh "},
        {"beginWblock of a drawing", [&](auto& r) { r.beginWblock(&database, &database); }, "tab0 page "},
        {"beginWblock of a block", [&](auto& r) { r.beginWblock(&database, &database, AcDbObjectId()); }, "tab0 page "},
    };
    for (const auto& c : cases) {
        events.tell(c.event);
        EXPECT_EQ(views.take(), c.expected) << c.what;
    }
    AcDbDatabase part;
    AcDbObjectId block;
    ASSERT_EQ(database.insert(block, "PART", &part), Acad::eOk);
    EXPECT_EQ(views.take(), "refresh refresh ") << "copying and inserting both end";
}

TEST_F(Events, PurgeRefreshesInAnyCase) {
    openPalette();
    for (const char* name : {"PURGE", "purge", "Purge"}) {
        host.editor().reactors().tell([&](AcEditorReactor& r) { r.commandEnded(name); });
        EXPECT_EQ(views.take(), "refresh ") << name;
    }
    host.runText("LINE 0,0 1,1\n\n");
    EXPECT_EQ(views.take(), "");
}

TEST_F(Events, WithoutAPaletteTheyAreHarmless) {
    AcDbDatabase& database = *first->database();
    acrxEventReactors().tell([&](AcRxEventReactor& r) {
        r.beginWblock(&database, &database);
        r.endInsert(&database);
    });
    host.editor().reactors().tell([](AcEditorReactor& r) { r.commandEnded("PURGE"); });
    EXPECT_EQ(views.take(), "");
}

} // namespace
