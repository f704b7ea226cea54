#include "host/host_fixture.h"

#include "lisp/interpreter.h"
#include "lisp/printer.h"

std::string HostTest::lisp(const std::string& expression) {
    auto result = document().lisp().evaluateText(expression);
    return result ? vndk::lisp::toText(result.value(), vndk::lisp::PrintStyle::Readable)
                  : vndk::lisp::formatFailure(result.failure());
}

size_t HostTest::entityCount() {
    const AcDbObjectPointer<AcDbBlockTableRecord> space(database().modelSpaceId());
    size_t count = 0;
    for (const AcDbObjectId id : space->entities())
        count += !id.isErased();
    return count;
}
