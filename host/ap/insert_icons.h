// Blocks that come out of drawings get a picture, as those get one that are made in the drawing.
#pragma once

#include "db/reactors.h"

#include <string>
#include <vector>

namespace vndk::host {

/// Made before any module's reactor, so that those find the picture when they are told of the insertion's end.
class InsertIcons : public AcRxEventReactor {
public:
    InsertIcons();
    ~InsertIcons() override;
    InsertIcons(const InsertIcons&) = delete;
    InsertIcons& operator=(const InsertIcons&) = delete;

    void beginInsert(AcDbDatabase* to, const char* blockName, AcDbDatabase* from) override;
    void abortInsert(AcDbDatabase* to) override;
    void endInsert(AcDbDatabase* to) override;

private:
    std::vector<std::string> names_; // of insertions that run; the innermost is last
};

} // namespace vndk::host
