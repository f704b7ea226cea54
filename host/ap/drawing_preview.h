// Small pictures of drawings and blocks, as files hold them: device-independent bitmaps of 256 colours, without file
// header.
#pragma once

#include "dwg/active_view.h"

#include "db/object_id.h"

#include <cstdint>
#include <vector>

class AcApDocument;
class AcDbDatabase;

namespace vndk::host {

/// What a drawing that is open shows of its current space.
std::vector<uint8_t> previewOf(AcApDocument& document);
/// All of a drawing's model space. Empty when nothing of it is seen.
std::vector<uint8_t> previewOf(AcDbDatabase& database);
/// All of a block, 32 x 32 pixels on white. Empty when nothing of it is seen.
std::vector<uint8_t> iconOf(AcDbObjectId block);

/// Before a drawing that is open is saved: gives its database the views and the picture that the file gets.
void prepareToSave(AcApDocument& document);

} // namespace vndk::host
