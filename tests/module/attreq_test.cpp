// ATTREQ with values that the host's own check lets nobody set, which other programs may have left.
//
// The functions defined below stand before the host's own in every look-up of the process.
#include "ads/ads.h"
#include "module/watcher_fixture.h"

namespace {

short g_attreq = 1;
std::vector<int> g_set;

class AttreqTest : public WatcherTest {};

TEST_F(AttreqTest, OnlyOneAsksAndEachValueComesBackAsItWas) {
    define("A", "text");
    for (const short value : {2, -1, 0, 1}) {
        g_attreq = value;
        g_set.clear();
        run(value == 1 ? "INSERT 1,1\n" : "INSERT 1,1");
        EXPECT_EQ(output.find("Prompt <text>: ") != std::string::npos, value == 1) << value;
        EXPECT_EQ(g_set, (std::vector<int>{0, value}));
        EXPECT_EQ(g_attreq, value);
    }
}

} // namespace

int acedGetVar(const char* name, resbuf* result) {
    EXPECT_STREQ(name, "ATTREQ");
    result->restype = RTSHORT;
    result->resval.rint = g_attreq;
    return RTNORM;
}

int acedSetVar(const char* name, const resbuf* value) {
    EXPECT_STREQ(name, "ATTREQ");
    EXPECT_EQ(value->restype, RTSHORT);
    g_attreq = value->resval.rint;
    g_set.push_back(g_attreq);
    return RTNORM;
}
