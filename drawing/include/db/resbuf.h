// Result buffers: linked lists of typed values, in which xdata, LISP arguments and system variables travel.
//
// A list is owned by whoever was given it and released whole with acutRelRb, strings included. Strings are
// 8-bit text in code page 1252, allocated by this library (acutNewString) and released by acutDelString.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "db/object_id.h"

using ads_real = double;
using ads_point = ads_real[3];
/// An entity's name outside the database: element 0 holds the id, element 1 is 0.
using ads_name = intptr_t[2];

struct ads_binary {
    short clen;
    char* buf;
};

union ads_u_val {
    ads_real rreal;
    ads_real rpoint[3];
    short rint;
    int32_t rlong;
    char* rstring;
    ads_name rlname;
    ads_binary rbinary;
};

struct resbuf {
    resbuf* rbnext = nullptr;
    short restype = 0;
    ads_u_val resval{};
};

/// Results of calls that ask the user or the host.
inline constexpr int RTNORM = 5100;
inline constexpr int RTERROR = -5001;
inline constexpr int RTCAN = -5002;
inline constexpr int RTREJ = -5003;
inline constexpr int RTFAIL = -5004;
inline constexpr int RTKWORD = -5005;

/// Types of result buffers. Values below 5000 are DXF group codes.
enum : short {
    RTNONE = 5000,
    RTREAL = 5001,
    RTPOINT = 5002, // a point of two coordinates
    RTSHORT = 5003,
    RTANG = 5004,
    RTSTR = 5005,
    RTENAME = 5006,
    RTPICKS = 5007,
    RTORINT = 5008,
    RT3DPOINT = 5009,
    RTLONG = 5010,
    RTVOID = 5014,
    RTLB = 5016, // list begins
    RTLE = 5017, // list ends
    RTDOTE = 5018,
    RTNIL = 5019,
    RTDXF0 = 5020,
    RTT = 5021,
};

/// A buffer of that type with no value; owned by the caller.
resbuf* acutNewRb(int type);
/// Releases a whole list, its strings and binary chunks. Null is allowed. Returns RTNORM.
int acutRelRb(resbuf* list);
/// Told of each list that acutRelRb is about to release, so that whoever lent one out knows. Null for none.
void acdbSetReleaseObserver(void (*observer)(const resbuf* list));
/// A copy of the text, owned by the caller and released by acutDelString; null for null.
char* acutNewString(const char* text);
char* acutNewString(std::string_view text);
/// Releases a text and sets the pointer null.
void acutDelString(char*& text);
/// How a value of that DXF group code or RT type is held: RTSTR, RT3DPOINT, RTREAL, RTSHORT, RTLONG, RTENAME
/// (also for handles as text: RTSTR), or RTNONE if the code has no value.
short acdbGroupCodeToType(int groupCode);
