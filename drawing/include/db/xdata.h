// Extended data as a drawing file packs it: for each application, items of a one-byte code and a value.
//
// Item layout (code = DXF code - 1000): 0 text: length byte, code page as two bytes high first, bytes;
// 2 brace: one byte, 0 opens; 3 and 5 handle: eight bytes high first; 4 binary: length byte, bytes;
// 10 to 15 three doubles; 40 to 42 a double; 70 a short; 71 a long. Numbers are low byte first.
#pragma once

#include "db/object_id.h"

#include <string>
#include <string_view>
#include <vector>

struct AcDbXDataGroup {
    AcDbObjectId application; // the registered application's record
    std::string items;        // packed items
};

struct AcDbXData {
    std::vector<AcDbXDataGroup> groups;
};

/// Writes packed items.
class AcDbXDataWriter {
public:
    explicit AcDbXDataWriter(std::string& out) : out_(out) {}
    /// At most 255 bytes; longer text is cut into several items by the caller.
    void text(std::string_view value);
    void brace(bool opening);
    void handle(AcDbHandle value);
    /// The handle of a layer's record.
    void layer(AcDbHandle value);
    void binary(std::string_view value);
    /// `code` 10 to 15.
    void point(int code, double x, double y, double z);
    /// `code` 40 to 42.
    void real(int code, double value);
    void int16(short value);
    void int32(int32_t value);

private:
    void handleItem(char code, AcDbHandle value);

    std::string& out_;
};

/// One packed item, decoded.
struct AcDbXDataItem {
    int code = 0; // 0 to 71, see above
    std::string_view text;
    double real[3] = {0, 0, 0};
    int32_t integer = 0;
    AcDbHandle handle;
};

/// Reads packed items; never passes their end.
class AcDbXDataReader {
public:
    explicit AcDbXDataReader(std::string_view items) : items_(items) {}
    /// False at the end and at a damaged item (then damaged() is true).
    bool next(AcDbXDataItem& item);
    bool damaged() const { return damaged_; }
    /// Where the next item begins. A handle and numbers are the last bytes of their item.
    size_t position() const { return position_; }

private:
    std::string_view items_;
    size_t position_ = 0;
    bool damaged_ = false;
};
