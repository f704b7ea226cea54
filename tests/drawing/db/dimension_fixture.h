#pragma once
// A drawing with a plain dimension style, and looks at the pictures of dimensions.

#include "db/dimensions.h"
#include "db/id_mapping.h"
#include "db/solids.h"
#include "drawing/db/database_fixture.h"

#include <functional>
#include <memory>

inline constexpr double kNear = 1e-6;

using Parts = std::vector<std::unique_ptr<AcDbEntity>>;

/// The parts of a class, in order.
template <class T>
std::vector<const T*> partsOf(const Parts& parts) {
    std::vector<const T*> found;
    for (const auto& part : parts)
        if (const T* const typed = T::cast(part.get()))
            found.push_back(typed);
    return found;
}

inline std::string textOf(const Parts& parts) {
    const auto texts = partsOf<AcDbMText>(parts);
    return texts.empty() ? std::string("no text") : texts[0]->contentsValue();
}

/// A style of whole numbers: heads and texts 1 high, lines 0.5 off.
inline AcDbDimStyleTableRecord::Data plainStyle() {
    AcDbDimStyleTableRecord::Data style;
    style.dimasz = style.dimtxt = 1;
    style.dimexo = style.dimexe = style.dimgap = 0.5;
    style.dimtih = style.dimtoh = false;
    style.dimtad = 1;
    style.dimdec = 2;
    style.dimzin = 8;
    return style;
}

class DimensionTest : public DatabaseTest {
protected:
    DimensionTest() {
        changeStyle([](AcDbDimStyleTableRecord::Data& style) { style = plainStyle(); });
    }

    AcDbObjectId style() const { return database.idOf(database.header().DIMSTYLE); }

    void changeStyle(const std::function<void(AcDbDimStyleTableRecord::Data&)>& change) {
        const AcDbObjectPointer<AcDbDimStyleTableRecord> record(style(), AcDb::kForWrite);
        AcDbDimStyleTableRecord::Data data = record->data();
        change(data);
        ASSERT_EQ(record->setData(data), Acad::eOk);
    }

    /// 20 long, its line 5 above.
    AcDbObjectId appendAligned(const char* text = nullptr) {
        return append(new AcDbAlignedDimension({0, 0, 0}, {20, 0, 0}, {20, 5, 0}, text));
    }

    Parts pictureOf(AcDbObjectId id) {
        const AcDbObjectPointer<AcDbDimension> dimension(id);
        Parts parts;
        const AcDbObjectPointer<AcDbBlockTableRecord> block(dimension->dimBlockId());
        EXPECT_TRUE(block) << "the dimension has no picture";
        for (const AcDbObjectId part : block ? block->entities() : std::vector<AcDbObjectId>())
            if (const AcDbObjectPointer<AcDbEntity> entity(part); entity)
                parts.emplace_back(static_cast<AcDbEntity*>(entity->copyData()));
        return parts;
    }

    Acad::ErrorStatus transform(AcDbObjectId id, const AcGeMatrix3d& matrix) {
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
        return entity->transformBy(matrix);
    }

    AcDbObjectId blockOf(AcDbObjectId id) { return AcDbObjectPointer<AcDbDimension>(id)->dimBlockId(); }

    AcDbObjectId copy(AcDbObjectId id) {
        AcDbIdMapping mapping(&database, &database);
        EXPECT_EQ(database.deepCloneObjects({id}, database.modelSpaceId(), mapping), Acad::eOk);
        return mapping.lookUp(id);
    }
};

inline void expectEnds(const AcDbLine& line, const AcGePoint3d& start, const AcGePoint3d& end) {
    EXPECT_LT(line.startPoint().distanceTo(start), kNear) << line.startPoint().x << "," << line.startPoint().y;
    EXPECT_LT(line.endPoint().distanceTo(end), kNear) << line.endPoint().x << "," << line.endPoint().y;
}
