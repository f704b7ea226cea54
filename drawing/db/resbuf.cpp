#include "db/resbuf.h"

#include <cstdlib>
#include <cstring>

resbuf* acutNewRb(int type) {
    auto* const buffer = new resbuf;
    buffer->restype = static_cast<short>(type);
    return buffer;
}

namespace {

void (*g_releaseObserver)(const resbuf*) = nullptr;

} // namespace

void acdbSetReleaseObserver(void (*observer)(const resbuf*)) { g_releaseObserver = observer; }

int acutRelRb(resbuf* list) {
    if (list && g_releaseObserver)
        g_releaseObserver(list);
    while (list) {
        resbuf* const next = list->rbnext;
        if (acdbGroupCodeToType(list->restype) == RTSTR)
            acutDelString(list->resval.rstring);
        else if (list->restype == 1004 || (list->restype >= 310 && list->restype <= 319))
            delete[] list->resval.rbinary.buf;
        delete list;
        list = next;
    }
    return RTNORM;
}

char* acutNewString(std::string_view text) {
    char* const copy = new char[text.size() + 1];
    std::memcpy(copy, text.data(), text.size());
    copy[text.size()] = 0;
    return copy;
}

char* acutNewString(const char* text) { return text ? acutNewString(std::string_view(text)) : nullptr; }

void acutDelString(char*& text) {
    delete[] text;
    text = nullptr;
}

namespace {

struct GroupRange {
    short first, last;
    short type;
};

// Group codes as DXF defines them; entity names stand at -1, -2 and the pointer codes.
constexpr GroupRange kGroupRanges[] = {
    {-2, -1, RTENAME},   {-4, -3, RTNONE},        {0, 9, RTSTR},         {10, 39, RT3DPOINT},   {40, 59, RTREAL},
    {60, 79, RTSHORT},   {90, 99, RTLONG},        {100, 102, RTSTR},     {105, 105, RTSTR},     {110, 119, RT3DPOINT},
    {140, 149, RTREAL},  {170, 179, RTSHORT},     {210, 239, RT3DPOINT}, {270, 299, RTSHORT},   {300, 309, RTSTR},
    {320, 329, RTSTR},   {330, 369, RTENAME},     {370, 389, RTSHORT},   {390, 399, RTENAME},   {400, 409, RTSHORT},
    {410, 419, RTSTR},   {420, 429, RTLONG},      {440, 459, RTLONG},    {460, 469, RTREAL},    {999, 1003, RTSTR},
    {1005, 1005, RTSTR}, {1010, 1039, RT3DPOINT}, {1040, 1059, RTREAL},  {1060, 1070, RTSHORT}, {1071, 1071, RTLONG},
};

} // namespace

short acdbGroupCodeToType(int groupCode) {
    if (groupCode >= RTNONE)
        return static_cast<short>(groupCode == RTORINT ? int{RTSHORT} : groupCode);
    for (const GroupRange& range : kGroupRanges)
        if (groupCode >= range.first && groupCode <= range.last)
            return range.type;
    return RTNONE;
}
