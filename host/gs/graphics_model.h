// The model behind AcGsModel.
#pragma once

#include "gs/display_lists.h"
#include "gs/model.h"
#include "gs/styles.h"

namespace vndk::gs {

class GraphicsModel final : public AcGsModel {
public:
    void invalidate() override { lists_.clear(); }
    bool visibleExtents(AcDbObjectId record, AcDbExtents& extents) override;

    DisplayLists& lists() { return lists_; }

private:
    void addVisible(const DisplayList& list, size_t part, const std::vector<Style>& styles, AcDbExtents& extents);

    DisplayLists lists_;
};

} // namespace vndk::gs
