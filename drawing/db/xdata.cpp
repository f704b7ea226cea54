#include "db/xdata.h"

#include <bit>
#include <cstring>

namespace {

constexpr char kCodePage1252 = 0x1E;

void putLittleEndian(std::string& out, uint64_t value, int bytes) {
    for (int i = 0; i < bytes; ++i)
        out.push_back(static_cast<char>(value >> (8 * i)));
}

uint64_t littleEndian(std::string_view bytes) {
    uint64_t value = 0;
    for (size_t i = bytes.size(); i-- > 0;)
        value = value << 8 | static_cast<unsigned char>(bytes[i]);
    return value;
}

/// Bytes behind the code of an item without text; -1 for a code that doesn't exist.
int fixedSize(int code) {
    switch (code) {
    case 1:
        return 2;
    case 2:
        return 1;
    case 3:
    case 5:
        return 8;
    case 70:
        return 2;
    case 71:
        return 4;
    default:
        if (code >= 10 && code <= 15)
            return 24;
        return code >= 40 && code <= 42 ? 8 : -1;
    }
}

} // namespace

void AcDbXDataWriter::text(std::string_view value) {
    value = value.substr(0, 255);
    out_.push_back(0);
    out_.push_back(static_cast<char>(value.size()));
    out_.push_back(0);
    out_.push_back(kCodePage1252);
    out_.append(value);
}

void AcDbXDataWriter::brace(bool opening) {
    out_.push_back(2);
    out_.push_back(opening ? 0 : 1);
}

void AcDbXDataWriter::handle(AcDbHandle value) { handleItem(5, value); }

void AcDbXDataWriter::layer(AcDbHandle value) { handleItem(3, value); }

void AcDbXDataWriter::handleItem(char code, AcDbHandle value) {
    out_.push_back(code);
    for (int i = 7; i >= 0; --i)
        out_.push_back(static_cast<char>(value.value() >> (8 * i)));
}

void AcDbXDataWriter::binary(std::string_view value) {
    value = value.substr(0, 255);
    out_.push_back(4);
    out_.push_back(static_cast<char>(value.size()));
    out_.append(value);
}

void AcDbXDataWriter::point(int code, double x, double y, double z) {
    out_.push_back(static_cast<char>(code));
    for (const double v : {x, y, z})
        putLittleEndian(out_, std::bit_cast<uint64_t>(v), 8);
}

void AcDbXDataWriter::real(int code, double value) {
    out_.push_back(static_cast<char>(code));
    putLittleEndian(out_, std::bit_cast<uint64_t>(value), 8);
}

void AcDbXDataWriter::int16(short value) {
    out_.push_back(70);
    putLittleEndian(out_, static_cast<uint16_t>(value), 2);
}

void AcDbXDataWriter::int32(int32_t value) {
    out_.push_back(71);
    putLittleEndian(out_, static_cast<uint32_t>(value), 4);
}

bool AcDbXDataReader::next(AcDbXDataItem& item) {
    if (damaged_ || position_ >= items_.size())
        return false;
    item = AcDbXDataItem();
    item.code = static_cast<unsigned char>(items_[position_]);
    std::string_view rest = items_.substr(position_ + 1);
    const bool isText = item.code == 0;
    if (isText || item.code == 4) {
        const size_t head = isText ? 3 : 1;
        const size_t length = rest.empty() ? 0 : static_cast<unsigned char>(rest[0]);
        damaged_ = rest.size() < head + length;
        if (damaged_)
            return false;
        item.text = rest.substr(head, length);
        position_ += 1 + head + length;
        return true;
    }
    const int size = fixedSize(item.code);
    damaged_ = size < 0 || rest.size() < static_cast<size_t>(size);
    if (damaged_)
        return false;
    rest = rest.substr(0, static_cast<size_t>(size));
    position_ += 1 + rest.size();
    if (item.code == 3 || item.code == 5) {
        uint64_t value = 0;
        for (const char c : rest)
            value = value << 8 | static_cast<unsigned char>(c);
        item.handle = AcDbHandle(value);
    } else if (item.code >= 10 && item.code <= 42) {
        for (size_t i = 0; i * 8 < rest.size(); ++i)
            item.real[i] = std::bit_cast<double>(littleEndian(rest.substr(i * 8, 8)));
    } else {
        const uint64_t value = littleEndian(rest);
        item.integer = rest.size() == 2 ? static_cast<int16_t>(value) : static_cast<int32_t>(value);
    }
    return true;
}
