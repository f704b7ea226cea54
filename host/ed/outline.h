// The lines of entities as they are seen, blocks taken apart: for snapping to them and for showing them by themselves.
#pragma once

#include "db/object_id.h"
#include "ge/matrix3d.h"

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

class AcDbEntity;

namespace vndk::host {

/// The points center + major cos u + minor sin u, u from `start` on through `sweep` radians.
struct OutlineArc {
    AcGePoint3d center;
    AcGeVector3d major, minor;
    double start = 0, sweep = 0;

    AcGePoint3d at(double u) const;
};

/// World coordinates.
struct Outline {
    /// Straight lines one after the other; `ends` are the places behind each one's last point.
    struct Lines {
        std::vector<AcGePoint3d> points;
        std::vector<uint32_t> ends;

        void add(std::span<const AcGePoint3d> line);
    };
    Lines lines;
    Lines frames; ///< around texts
    std::vector<OutlineArc> arcs;
    std::vector<AcGePoint3d> nodes;      ///< point entities
    std::vector<AcGePoint3d> insertions; ///< of texts and of references

    bool isEmpty() const { return lines.ends.empty() && frames.ends.empty() && arcs.empty() && nodes.empty(); }
};

/// Calls with each straight piece of the outline through a transform, arcs divided so that they look round where its
/// units are pixels.
void forEachPiece(const Outline& outline, const AcGeMatrix3d& toSeen,
                  const std::function<void(const AcGePoint3d&, const AcGePoint3d&)>& piece);

/// Adds what is drawn of an entity, through a transform. Endless lines are left out; of blocks that hold a senseless
/// number of things the rest is.
void addOutline(const AcDbEntity& entity, const AcGeMatrix3d& toWorld, Outline& outline);
/// The same of a block's contents, as references show them.
void addBlockOutline(AcDbObjectId block, const AcGeMatrix3d& toWorld, Outline& outline);
/// That of an entity; empty if it is erased or can't be opened.
Outline outlineOf(AcDbObjectId entity);

} // namespace vndk::host
