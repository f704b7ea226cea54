#include "insert_fixture.h"

#include <cmath>
#include <iomanip>
#include <sstream>

namespace {

double rounded(double number) { return std::round(number * 1e6) / 1e6 + 0.0; }

std::string describe(const AcDbBlockReference& reference) {
    std::ostringstream out;
    out << std::setprecision(10);
    const AcDbObjectPointer<AcDbBlockTableRecord> block(reference.blockTableRecord());
    const AcGeScale3d scale = reference.scaleFactors();
    out << block->name() << ' ' << rounded(reference.position().x) << ',' << rounded(reference.position().y) << " s "
        << rounded(scale.sx) << ',' << rounded(scale.sy) << ',' << rounded(scale.sz) << " r "
        << rounded(reference.rotation() * 180 / kAcGePi);
    if (const auto* array = AcDbMInsertBlock::cast(&reference))
        out << ' ' << array->columns() << " x " << array->columnSpacing() << ", " << array->rows() << " x "
            << array->rowSpacing();
    for (const AcDbObjectId id : reference.attributes()) {
        const AcDbObjectPointer<AcDbAttribute> attribute(id);
        if (attribute)
            out << ' ' << attribute->tagValue() << "='" << attribute->textValue() << "'@"
                << rounded(attribute->position().x) << ',' << rounded(attribute->position().y);
    }
    return out.str();
}

} // namespace

std::vector<AcDbObjectId> InsertFixture::referenceIds(const AcDbDatabase& database) {
    std::vector<AcDbObjectId> ids;
    const AcDbObjectPointer<AcDbBlockTableRecord> space(database.tilemode() ? database.modelSpaceId()
                                                                            : database.paperSpaceId());
    for (const AcDbObjectId id : space->entities())
        if (const AcDbObjectPointer<AcDbBlockReference> reference(id); reference)
            ids.push_back(id);
    return ids;
}

std::string InsertFixture::references(const AcDbDatabase& database) {
    std::string text;
    for (const AcDbObjectId id : referenceIds(database)) {
        const AcDbObjectPointer<AcDbBlockReference> reference(id);
        text += (text.empty() ? "" : "\n") + describe(*reference);
    }
    return text;
}

AcDbObjectId InsertFixture::renameBlock(const char* name, const char* newName) {
    AcDbObjectId id;
    {
        const AcDbObjectPointer<AcDbBlockTable> table(database().blockTableId());
        static_cast<const AcDbSymbolTable&>(*table).getAt(name, id);
    }
    const AcDbObjectPointer<AcDbBlockTableRecord> record(id, AcDb::kForWrite);
    return record && record->setName(newName) == Acad::eOk ? id : AcDbObjectId();
}
