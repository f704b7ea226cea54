// A drawing and a view of it in memory: pixel (x, y) shows what lies within x to x + 1 and, upward, y to y + 1.
#pragma once

#include "db/block_reference.h"
#include "db/curves.h"
#include "db/database.h"
#include "db/open.h"
#include "db/text.h"
#include "gs/manager.h"

#include <gtest/gtest.h>

#include <memory>

class GsTest : public testing::Test {
protected:
    static constexpr int kSide = 100;
    static constexpr uint32_t kBlack = 0xFF000000, kWhite = 0xFFFFFFFF, kRed = 0xFFFF0000, kGreen = 0xFF00FF00,
                              kBlue = 0xFF0000FF, kYellow = 0xFFFFFF00;

    GsTest()
        : device(manager.createAutoCADOffScreenDevice()), model(manager.createAutoCADModel()),
          view(manager.getGSClassFactory()->createView()) {
        device->onSize(kSide, kSide);
        device->add(view);
        view->setView({50, 50, 1}, {50, 50, 0}, AcGeVector3d::kYAxis, kSide, kSide);
    }
    ~GsTest() override {
        manager.getGSClassFactory()->deleteView(view);
        manager.destroyAutoCADModel(model);
        manager.destroyAutoCADDevice(device);
    }

    template <class T>
    AcDbObjectId append(std::unique_ptr<T> entity, AcDbObjectId record) {
        const AcDbObjectPointer<AcDbBlockTableRecord> block(record, AcDb::kForWrite);
        AcDbObjectId id;
        EXPECT_EQ(block->appendAcDbEntity(id, entity.get()), Acad::eOk);
        entity.release()->close();
        return id;
    }
    template <class T>
    AcDbObjectId append(std::unique_ptr<T> entity) {
        return append(std::move(entity), database.modelSpaceId());
    }
    AcDbObjectId newBlock(const char* name) {
        const AcDbObjectPointer<AcDbBlockTable> table(database.blockTableId(), AcDb::kForWrite);
        auto* const record = new AcDbBlockTableRecord;
        EXPECT_EQ(record->setName(name), Acad::eOk);
        AcDbObjectId id;
        EXPECT_EQ(table->add(id, record), Acad::eOk);
        record->close();
        return id;
    }
    AcDbObjectId newLayer(const char* name, short color) {
        const AcDbObjectPointer<AcDbLayerTable> table(database.layerTableId(), AcDb::kForWrite);
        auto* const record = new AcDbLayerTableRecord;
        EXPECT_EQ(record->setName(name), Acad::eOk);
        EXPECT_EQ(record->setColor(color), Acad::eOk);
        AcDbObjectId id;
        EXPECT_EQ(table->add(id, record), Acad::eOk);
        record->close();
        return id;
    }
    /// Dashes of 10 units and gaps of the same length.
    AcDbObjectId newDashes() {
        AcDbObjectId dashed;
        const AcDbObjectPointer<AcDbLinetypeTable> table(database.linetypeTableId(), AcDb::kForWrite);
        auto* const record = new AcDbLinetypeTableRecord;
        record->setName("GAPS");
        AcDbLinetypeTableRecord::Data data;
        data.patternLength = 20;
        data.dashes.resize(2);
        data.dashes[0].length = 10;
        data.dashes[1].length = -10;
        record->setData(data);
        table->add(dashed, record);
        record->close();
        return dashed;
    }
    /// A line from the left to the right edge in the middle of the pixels of a row.
    static std::unique_ptr<AcDbLine> lineInRow(int row, short color = 1) {
        auto line = std::make_unique<AcDbLine>(AcGePoint3d(0, row + 0.5, 0), AcGePoint3d(kSide, row + 0.5, 0));
        line->setColorIndex(color);
        return line;
    }

    void show(AcDbObjectId record) {
        view->eraseAll();
        const AcDbObjectPointer<AcDbBlockTableRecord> block(record);
        ASSERT_TRUE(view->add(block.object(), model));
    }
    void draw() {
        if (!shown)
            show(database.modelSpaceId());
        shown = true;
        view->update();
    }
    uint32_t at(int x, int y) const { return device->picture().at(x, kSide - 1 - y); }
    /// Pixels of a colour within two corners, both included.
    int count(uint32_t color, int left = 0, int low = 0, int right = kSide - 1, int high = kSide - 1) const {
        int found = 0;
        for (int y = low; y <= high; ++y)
            for (int x = left; x <= right; ++x)
                found += at(x, y) == color;
        return found;
    }

    AcDbDatabase database{true, true};
    AcGsManager& manager = *acgsGetGsManager();
    AcGsDevice* device;
    AcGsModel* model;
    AcGsView* view;
    bool shown = false;
};
