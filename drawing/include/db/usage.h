// Which of a drawing's named objects nothing needs: what can be purged.
//
//     AcDbUsage usage(database);
//     for (const AcDbUsage::Named& layer : usage.unused(AcDbUsage::kLayers))
//         if (eraseIt(layer.id))
//             usage.forget(layer.id);
//
// Any reference counts, hard or soft: of entities and of other named objects, of header variables, extended data,
// dictionaries, extension records, and of objects whose types aren't modelled. What a named object itself holds (the
// contents of a block, its extension dictionary) needs others but not the object itself. Never unused are the spaces,
// external references and what came in with them, layer "0", the linetypes ByLayer, ByBlock and Continuous, the styles
// "Standard" and the application "ACAD".
#pragma once

#include "db/object_id.h"

#include <initializer_list>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

class AcDbUsage {
public:
    enum Kind { kBlocks, kLayers, kLinetypes, kTextStyles, kShapeFiles, kMlineStyles, kDimStyles, kRegApps };
    struct Named {
        AcDbObjectId id;
        std::string name;
    };

    /// Looks through the whole drawing, which stays as it is; later changes aren't seen. REQUIRES: the drawing has its
    /// tables, as every drawing that was read or built has.
    explicit AcDbUsage(AcDbDatabase& database);

    /// In the order of the table.
    std::vector<Named> unused(Kind kind) const;
    /// The object has been erased: what it alone needed is unused from now on.
    void forget(AcDbObjectId id);

private:
    friend class AcDbUsageCollector;
    struct Candidate {
        Kind kind;
        std::string name;
        size_t users = 0; // named objects that need it, and one for all the rest
    };

    void addCandidates(AcDbDatabase& database);
    void addTable(AcDbObjectId table, Kind kind, std::initializer_list<const char*> kept);
    void addMlineStyles(AcDbDatabase& database);
    void addCandidate(AcDbObjectId id, Kind kind, std::string name, std::initializer_list<const char*> kept);
    void addUse(AcDbObjectId user, AcDbObjectId used);

    std::unordered_map<AcDbObjectId, Candidate> candidates_;
    std::vector<AcDbObjectId> order_;
    std::unordered_set<AcDbObjectId> lists_; // tables and dictionaries, which list candidates
    // By the named object that needs them; the null id stands for the rest of the drawing.
    std::unordered_map<AcDbObjectId, std::unordered_set<AcDbObjectId>> needs_;
};
