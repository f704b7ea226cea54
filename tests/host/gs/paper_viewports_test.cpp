// The model on sheets of paper.
#include "db/viewport.h"
#include "host/gs/gs_fixture.h"

namespace {

class PaperViewportsTest : public GsTest {
protected:
    PaperViewportsTest() {
        viewport({}); // the sheet itself
        append(lineInRow(10));
        auto onLayer = lineInRow(20, 3);
        onLayer->setLayer(layer);
        append(std::move(onLayer));
        show(database.paperSpaceId());
        shown = true;
    }
    /// 40 x 40 on the sheet about (50, 50), showing 80 x 80 of the model about (50, 10).
    static AcDbViewport::Data data() {
        AcDbViewport::Data data;
        data.center = {50, 50, 0};
        data.width = data.height = 40;
        data.target = {50, 10, 0};
        data.viewHeight = 80;
        return data;
    }
    AcDbObjectId viewport(const AcDbViewport::Data& data) {
        auto made = std::make_unique<AcDbViewport>();
        made->setFileData(data);
        // Frames that aren't seen show the model all the same.
        const AcDbObjectId frames = newLayer(("frame" + std::to_string(frames_++)).c_str(), 6);
        AcDbObjectPointer<AcDbLayerTableRecord>(frames, AcDb::kForWrite)->setIsOff(true);
        made->setLayer(frames);
        return append(std::move(made), database.paperSpaceId());
    }
    void change(AcDbObjectId id, const AcDbViewport::Data& data) {
        AcDbObjectPointer<AcDbViewport>(id, AcDb::kForWrite)->setFileData(data);
        view->update();
    }
    AcDbObjectId layer = newLayer("green", 3);
    AcDbObjectId other = newBlock("*Paper_Space0");

private:
    int frames_ = 0;
};

} // namespace

TEST_F(PaperViewportsTest, ShowTheModelToScaleWithinTheirFrame) {
    view->update();
    EXPECT_EQ(count(kRed) + count(kGreen), 0) << "the sheet itself shows nothing";
    const AcDbObjectId id = viewport(data());
    view->update();
    EXPECT_EQ(count(kRed, 30, 50, 69, 50), 40);
    EXPECT_EQ(count(kGreen, 30, 55, 69, 55), 40);
    EXPECT_EQ(count(kRed), 40);
    EXPECT_EQ(count(kGreen), 40);

    AcDbViewport::Data changed = data();
    changed.frozenLayers = {layer};
    change(id, changed);
    EXPECT_EQ(count(kRed), 40);
    EXPECT_EQ(count(kGreen), 0);
    changed = data();
    changed.viewCenter = {0, 20};
    change(id, changed);
    EXPECT_EQ(count(kRed, 30, 40, 69, 40), 40);
    changed = data();
    changed.twist = kAcGePi / 2;
    change(id, changed);
    EXPECT_EQ(count(kGreen, 44, 30, 45, 69), 40) << "turned counter-clockwise, what lay above lies to the left";
    changed = data();
    changed.status = 0x20000;
    change(id, changed);
    EXPECT_EQ(count(kRed) + count(kGreen), 0) << "switched off";
}

TEST_F(PaperViewportsTest, HaveFramesButForTheSheetItself) {
    const auto framed = [&](double side, short color) {
        auto made = std::make_unique<AcDbViewport>();
        AcDbViewport::Data place = data();
        place.width = place.height = side;
        place.status = 0x20000;
        made->setFileData(place);
        made->setColorIndex(color);
        append(std::move(made), other);
    };
    framed(60, 5);
    framed(20, 1);
    show(other);
    view->update();
    EXPECT_EQ(count(kBlue), 0) << "the first one is the sheet";
    EXPECT_GE(count(kRed), 80);
}

TEST_F(PaperViewportsTest, HaveDashesOfTheSheetIfSoSet) {
    auto line = lineInRow(10, 5);
    line->setLinetype(newDashes());
    append(std::move(line));
    viewport(data()); // half as large as the model
    const auto gaps = [&] {
        view->update();
        int found = 0;
        for (int x = 31; x < 70; ++x)
            found += at(x, 50) != kBlue && at(x - 1, 50) == kBlue;
        return found;
    };
    database.changeHeader("PSLTSCALE", [](auto& header) { header.PSLTSCALE = true; });
    EXPECT_EQ(gaps(), 2) << "40 units of the sheet";
    database.changeHeader("PSLTSCALE", [](auto& header) { header.PSLTSCALE = false; });
    EXPECT_EQ(gaps(), 4) << "80 units of the model";
}

TEST_F(PaperViewportsTest, SeeTheModelFromAnySide) {
    AcDbViewport::Data front = data();
    front.direction = {0, -1, 0};
    front.target = {50, 0, 0};
    viewport(front);
    auto post = std::make_unique<AcDbLine>(AcGePoint3d(51, 0, 1), AcGePoint3d(51, 0, 100));
    post->setColorIndex(5);
    append(std::move(post));
    view->update();
    EXPECT_EQ(count(kBlue, 50, 50, 50, 69), 20) << "it stands upright and is cut off by the frame";
    EXPECT_EQ(count(kBlue), 20);
}
