// What an entity looks like under a transform that it can't follow as what it is. Private to the drawing layer.
#pragma once

#include "db/entity.h"
#include "ge/matrix3d.h"

#include <memory>
#include <vector>

namespace vndk::db {

using Parts = std::vector<std::unique_ptr<AcDbEntity>>;

/// Adds temporary entities that look like `entity` transformed. Most often it is one of the same class; under uneven
/// scaling circles and arcs become ellipses, text gets another width and slant, the width of a polyline grows by the
/// mean of both factors, and polylines with arcs, those with vertex entities, paragraphs, dimensions, leaders and
/// tolerances come in pieces.
/// eCannotScaleNonUniformly, eNotApplicable: it can't follow; nothing is added then.
Acad::ErrorStatus addTransformed(const AcDbEntity& entity, const AcGeMatrix3d& matrix, Parts& parts);

/// Gives a part what it would take from the entity that shows it: colour, linetype and lineweight ByBlock, layer "0".
void inherit(AcDbEntity& part, const AcDbEntity& shownBy, AcDbDatabase& database);

/// The same for all parts; without a database they take all properties.
Parts shownBy(const AcDbEntity& entity, AcDbDatabase* database, Parts parts);

/// Hands the parts to the caller of an explode.
inline void release(Parts& parts, std::vector<AcDbEntity*>& to) {
    for (std::unique_ptr<AcDbEntity>& part : parts)
        to.push_back(part.release());
}

} // namespace vndk::db
