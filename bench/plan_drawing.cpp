#include "plan_drawing.h"

#include "db/block_reference.h"
#include "db/curves.h"
#include "db/database.h"
#include "db/text.h"

#include <cstdio>
#include <memory>
#include <vector>

namespace vndk::bench {

namespace {

constexpr int kLines = 80'000, kCircles = 24'000, kTexts = 14'000, kBlocks = 1'000, kReferences = 10'000;

AcGePoint3d place(int i) { return {i % 400 * 12.5, i / 400 * 7.25, 0}; }

bool append(AcDbBlockTableRecord& record, std::unique_ptr<AcDbEntity> entity) {
    if (record.appendAcDbEntity(entity.get()) != Acad::eOk)
        return false;
    return entity.release()->close() == Acad::eOk;
}

bool addBlock(AcDbDatabase& database, int number, std::vector<AcDbObjectId>& blocks) {
    AcDbBlockTable* table = nullptr;
    if (database.getSymbolTable(table, AcDb::kForWrite) != Acad::eOk)
        return false;
    auto record = std::make_unique<AcDbBlockTableRecord>();
    record->setName(("BLOCK" + std::to_string(number)).c_str());
    AcDbObjectId id;
    bool well = table->add(id, record.get()) == Acad::eOk;
    table->close();
    if (!well)
        return false;
    AcDbBlockTableRecord* const added = record.release();
    well = append(*added, std::make_unique<AcDbLine>(AcGePoint3d(0, 0, 0), AcGePoint3d(8, 5, 0))) &&
           append(*added, std::make_unique<AcDbAttributeDefinition>(AcGePoint3d(1, 1, 0), "value", "TAG", "Value"));
    added->close();
    blocks.push_back(id);
    return well;
}

bool addReference(AcDbBlockTableRecord& space, int number, AcDbObjectId block) {
    auto reference = std::make_unique<AcDbBlockReference>(place(number), block);
    if (space.appendAcDbEntity(reference.get()) != Acad::eOk)
        return false;
    AcDbBlockReference* const added = reference.release();
    auto attribute = std::make_unique<AcDbAttribute>(place(number), ("value " + std::to_string(number)).c_str(), "TAG");
    attribute->setHeight(2.5);
    bool well = added->appendAttribute(attribute.get()) == Acad::eOk;
    if (well)
        attribute.release()->close();
    added->close();
    return well;
}

bool fill(AcDbDatabase& database, double size) {
    const auto times = [size](int count) { return static_cast<int>(count * size); };
    std::vector<AcDbObjectId> blocks;
    for (int i = 0; i < times(kBlocks); ++i)
        if (!addBlock(database, i, blocks))
            return false;
    const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForWrite);
    bool well = bool(space);
    for (int i = 0; well && i < times(kLines); ++i)
        well = append(*space, std::make_unique<AcDbLine>(place(i), place(i + 7)));
    for (int i = 0; well && i < times(kCircles); ++i)
        well = append(*space, std::make_unique<AcDbCircle>(place(i), AcGeVector3d(0, 0, 1), 1 + i % 9));
    for (int i = 0; well && i < times(kTexts); ++i)
        well = append(*space, std::make_unique<AcDbText>(place(i), ("Room " + std::to_string(i)).c_str(),
                                                         AcDbObjectId(), 2.5, 0));
    for (int i = 0; well && i < times(kReferences); ++i)
        well = addReference(*space, i, blocks[static_cast<size_t>(i) % blocks.size()]);
    return well;
}

} // namespace

bool makePlanDrawing(const std::string& path, double size) {
    AcDbDatabase database(true, true);
    database.disableUndoRecording(true);
    if (!fill(database, size)) {
        std::fprintf(stderr, "The drawing for the measurement can't be made.\n");
        return false;
    }
    if (database.saveAs(path.c_str()) == Acad::eOk)
        return true;
    std::fprintf(stderr, "%s\n", database.lastFileError().c_str());
    return false;
}

} // namespace vndk::bench
