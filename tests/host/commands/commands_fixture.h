// A host whose drawing is read back as one line for each entity.
#pragma once

#include "host/host_fixture.h"

class CommandsTest : public HostTest {
protected:
    /// The entities of the current space that aren't erased, in order: "LINE 0,0 10,0".
    std::string drawn();
    /// The same for the model space of a drawing that isn't open in the host.
    static std::string drawnIn(const AcDbDatabase& database);
    /// Those of a block; "no block" if there is none.
    std::string blockContents(const char* name);
    /// A new drawing takes the place of the current one, unsaved.
    void startAgain();
    bool printed(std::string_view text) const { return output.find(text) != std::string::npos; }
};

/// What a script draws.
struct DrawingCase {
    const char* script;
    const char* drawn;
};
