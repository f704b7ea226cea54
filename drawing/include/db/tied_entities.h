// Entities that another one ties to itself: they stand beside it in the same block, and it holds them by
// hard-ownership ids. They are copied, moved and erased with it.
#pragma once

#include "db/object_id.h"

#include <vector>

class AcDbEntity;

/// The entities beside `entity` that it ties to itself, erased ones left out.
std::vector<AcDbObjectId> acdbTiedEntities(AcDbEntity& entity);
/// The given entities in their order without those that another of them ties to itself: what has to be transformed,
/// so that nothing is transformed twice. Entities that can't be opened for read stay in.
std::vector<AcDbObjectId> acdbWithoutTied(const std::vector<AcDbObjectId>& entities);
