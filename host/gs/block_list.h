// The display list of one block, which follows the block's entities one by one, and the way to those that lie
// somewhere.
#pragma once

#include "gs/display_list.h"
#include "gs/part_tree.h"

#include <functional>
#include <utility>

namespace vndk::gs {

class ListBuilder;

class BlockList {
public:
    /// The box around all of a block, and whether nothing bounds it.
    struct Whole {
        AcDbExtents box;
        bool endless = false;
    };
    using WholeOf = std::function<const Whole&(AcDbObjectId record)>;

    /// With `definitions` as the block looks by itself, else as behind a reference.
    BlockList(AcDbObjectId record, bool definitions) : record_(record), definitions_(definitions) {}

    /// The list as it is now. Entities that have changed are drawn anew.
    const DisplayList& list();
    /// An entity has come, has changed or has gone.
    void entityChanged(AcDbObjectId entity) { changed_.push_back(entity); }
    /// Blocks within have changed: their boxes are asked for again.
    void blocksChanged();
    /// No number: the entity isn't there.
    static constexpr uint32_t kNone = ~0U;
    uint32_t partOf(AcDbObjectId entity);

    /// The boxes around all that the parts show, by number. Those that nothing bounds are larger than any drawing.
    std::span<const AcDbExtents> reaches(const WholeOf& wholeOf);
    /// The box around all of them; it may be larger for what has gone.
    const AcDbExtents& reach(const WholeOf& wholeOf);
    /// Numbers of the parts whose boxes come out within a part of the picture, in the order in which they are drawn.
    /// That takes some time for the first time (`canFind` tells), unless who asks needs them `once`: then all boxes are
    /// looked at.
    const std::vector<uint32_t>& partsIn(const PictureBox& seen, const BoxProjector& projector, const WholeOf& wholeOf,
                                         bool once);
    /// Notes that a picture of a part is being drawn. True: it is the first one since all was made from the beginning.
    bool beginPicture() { return !std::exchange(wasDrawn_, true); }
    bool canFind() const { return tree_.size() > 0; }

private:
    void buildAll();
    void buildPart(ListBuilder& builder, AcDbObjectId entity, size_t part);
    void refreshChanged();
    void refresh(ListBuilder& builder, AcDbObjectId entity);
    const std::vector<uint32_t>& scan(const PictureBox& seen, const BoxProjector& projector, const WholeOf& wholeOf);
    void sortFound();
    AcDbExtents reachOf(size_t part, const WholeOf& wholeOf) const;
    AcDbExtents reachOfAll(const WholeOf& wholeOf) const;
    void followReach(const WholeOf& wholeOf);

    AcDbObjectId record_;
    bool definitions_;
    bool built_ = false, wasDrawn_ = false;
    int attributes_ = 1; // the drawing's ATTMODE when it was built
    DisplayList list_;
    AcDbExtents box_; // around all boxes of parts, and what has been drawn of them before
    size_t left_ = 0; // items that belong to no part
    std::vector<AcDbObjectId> changed_;
    std::unordered_map<const AcDbStub*, uint32_t> numbers_; // made when it is first needed
    AcDbExtents reach_; // around the first `reached_` parts, as they are but for `stale_`
    size_t reached_ = 0;
    std::vector<uint32_t> stale_;
    std::vector<AcDbExtents> reaches_; // of the same parts; none until somebody looks for parts
    PartTree tree_;
    std::vector<uint32_t> found_;
    std::vector<bool> isFound_; // kept between searches
};

} // namespace vndk::gs
