// The xdata calls of AcDbObject: between result buffers and the packed form.
#include "db/database.h"
#include "db/object.h"
#include "db/xdata.h"
#include "ge/matrix3d.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>
#include <utility>

namespace {

constexpr size_t kMostXData = 16 * 1024;

std::string symbolName(AcDbObjectId id) {
    const AcDbObjectPointer<AcDbSymbolTableRecord> record(id);
    return record ? record->name() : std::string();
}

/// Appends buffers to a list.
class ListBuilder {
public:
    ~ListBuilder() { acutRelRb(head_); }
    resbuf& add(int type) {
        resbuf* const buffer = acutNewRb(type);
        (tail_ ? tail_->rbnext : head_) = buffer;
        tail_ = buffer;
        return *buffer;
    }
    void addText(int type, std::string_view text) { add(type).resval.rstring = acutNewString(text); }
    resbuf* release() { return std::exchange(head_, nullptr); }

private:
    resbuf* head_ = nullptr;
    resbuf* tail_ = nullptr;
};

void addItem(ListBuilder& list, const AcDbXDataItem& item, AcDbDatabase& database) {
    const int type = 1000 + item.code;
    char text[20];
    switch (item.code) {
    case 0:
        list.addText(type, item.text);
        break;
    case 2:
        list.addText(type, item.integer == 0 ? "{" : "}");
        break;
    case 3:
        list.addText(type, symbolName(database.idOf(item.handle.value())));
        break;
    case 4: {
        ads_binary& chunk = list.add(type).resval.rbinary;
        chunk.clen = static_cast<short>(item.text.size());
        chunk.buf = acutNewString(item.text);
        break;
    }
    case 5:
        item.handle.getIntoAsciiBuffer(text);
        list.addText(type, text);
        break;
    case 70:
        list.add(type).resval.rint = static_cast<short>(item.integer);
        break;
    case 71:
        list.add(type).resval.rlong = item.integer;
        break;
    default:
        if (item.code >= 40)
            list.add(type).resval.rreal = item.real[0];
        else if (item.code >= 10)
            std::memcpy(list.add(type).resval.rpoint, item.real, sizeof item.real);
        break;
    }
}

/// Packs one buffer; false for a group code or a value that xdata can't hold.
bool packItem(AcDbXDataWriter& writer, const resbuf& buffer, AcDbDatabase& database) {
    const auto& value = buffer.resval;
    const char* const text = acdbGroupCodeToType(buffer.restype) == RTSTR ? value.rstring : "";
    if (!text)
        return false;
    switch (buffer.restype) {
    case 1000:
        writer.text(text);
        return std::strlen(text) <= 255;
    case 1002:
        writer.brace(*text == '{');
        return !std::strcmp(text, "{") || !std::strcmp(text, "}");
    case 1003: {
        AcDbObjectId layer;
        const AcDbObjectPointer<AcDbLayerTable> table(database.layerTableId());
        if (!table || table->getAt(text, layer) != Acad::eOk)
            return false;
        writer.layer(layer.handle());
        return true;
    }
    case 1004:
        writer.binary({value.rbinary.buf, static_cast<size_t>(value.rbinary.clen)});
        return true;
    case 1005:
        writer.handle(AcDbHandle(std::strtoull(text, nullptr, 16)));
        return true;
    case 1070:
        writer.int16(value.rint);
        return true;
    case 1071:
        writer.int32(value.rlong);
        return true;
    default:
        if (buffer.restype >= 1040 && buffer.restype <= 1042)
            writer.real(buffer.restype - 1000, value.rreal);
        else if (buffer.restype >= 1010 && buffer.restype <= 1013)
            writer.point(buffer.restype - 1000, value.rpoint[0], value.rpoint[1], value.rpoint[2]);
        else
            return false;
        return true;
    }
}

} // namespace

resbuf* AcDbObject::xData(const char* appName) const {
    const AcDbXData* const packed = packedXData();
    if (!packed || !database())
        return nullptr;
    const std::string wanted = appName ? acdbFoldName(appName) : std::string();
    ListBuilder list;
    for (const AcDbXDataGroup& group : packed->groups) {
        const std::string name = symbolName(group.application);
        if (appName && acdbFoldName(name) != wanted)
            continue;
        list.addText(1001, name);
        AcDbXDataReader reader(group.items);
        for (AcDbXDataItem item; reader.next(item);)
            addItem(list, item, *database());
    }
    return list.release();
}

Acad::ErrorStatus AcDbObject::setXData(const resbuf* xdata) {
    if (!database())
        return Acad::eNoDatabase;
    AcDbXData changed;
    for (const resbuf* buffer = xdata; buffer; buffer = buffer->rbnext) {
        if (buffer->restype == 1001) {
            AcDbObjectId application;
            const AcDbObjectPointer<AcDbRegAppTable> table(database()->regAppTableId());
            if (!table || table->getAt(buffer->resval.rstring, application) != Acad::eOk)
                return Acad::eRegappIdNotFound;
            changed.groups.push_back({application, {}});
            continue;
        }
        if (changed.groups.empty())
            return Acad::eInvalidResBuf;
        AcDbXDataWriter writer(changed.groups.back().items);
        if (!packItem(writer, *buffer, *database()))
            return Acad::eInvalidResBuf;
    }
    AcDbXData result = packedXData() ? *packedXData() : AcDbXData();
    for (AcDbXDataGroup& group : changed.groups) {
        std::erase_if(result.groups, [&](const AcDbXDataGroup& g) { return g.application == group.application; });
        if (!group.items.empty())
            result.groups.push_back(std::move(group));
    }
    size_t size = 0;
    for (const AcDbXDataGroup& group : result.groups)
        size += group.items.size();
    if (size > kMostXData)
        return Acad::eXdataSizeExceeded;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk)
        *packedXDataForWrite() = std::move(result);
    return status;
}

namespace {

/// The item as its entity's transform leaves it, packed; empty for items that stay as they are.
std::string transformedItem(const AcDbXDataItem& item, const AcGeMatrix3d& matrix, double scale) {
    const AcGeVector3d v(item.real[0], item.real[1], item.real[2]);
    std::string bytes;
    AcDbXDataWriter out(bytes);
    const auto write = [&](const AcGeVector3d& moved) { out.point(item.code, moved.x, moved.y, moved.z); };
    switch (item.code) {
    case 11:
        write((matrix * (AcGePoint3d::kOrigin + v)).asVector());
        break;
    case 12:
        write(matrix * v);
        break;
    case 13: {
        const AcGeVector3d turned = matrix * v;
        write(turned.isZeroLength() ? v : turned * (v.length() / turned.length()));
        break;
    }
    case 41:
    case 42:
        out.real(item.code, item.real[0] * scale);
        break;
    default:
        break;
    }
    return bytes;
}

} // namespace

Acad::ErrorStatus AcDbObject::xDataTransformBy(const AcGeMatrix3d& matrix) {
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk || !packedXData())
        return status;
    const double scale = std::cbrt(std::fabs(matrix.det()));
    for (AcDbXDataGroup& group : packedXDataForWrite()->groups) {
        const std::string former = group.items;
        AcDbXDataReader reader(former);
        AcDbXDataItem item;
        while (reader.next(item)) {
            const std::string bytes = transformedItem(item, matrix, scale);
            group.items.replace(reader.position() - bytes.size(), bytes.size(), bytes);
        }
    }
    return Acad::eOk;
}
