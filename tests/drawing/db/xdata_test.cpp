#include "database_fixture.h"

#include "db/xdata.h"

#include <cstring>

namespace {

class XData : public DatabaseTest {
protected:
    static resbuf* item(resbuf*& tail, int type) {
        resbuf* const buffer = acutNewRb(type);
        if (tail)
            tail->rbnext = buffer;
        return tail = buffer;
    }
    static resbuf* text(resbuf*& tail, int type, const char* value) {
        resbuf* const buffer = item(tail, type);
        buffer->resval.rstring = acutNewString(value);
        return buffer;
    }
};

TEST_F(XData, ComesBackAsItWentIn) {
    database.registerApplication("VNDK_TEST");
    const AcDbObjectId id = appendLine();
    resbuf* tail = nullptr;
    resbuf* const head = text(tail, 1001, "VNDK_TEST");
    text(tail, 1000, "T\xfcr");
    text(tail, 1002, "{");
    item(tail, 1010)->resval.rpoint[2] = 2.5;
    item(tail, 1040)->resval.rreal = -1e300;
    item(tail, 1070)->resval.rint = -7;
    item(tail, 1071)->resval.rlong = 70000;
    text(tail, 1005, "1F");
    text(tail, 1003, "0");
    text(tail, 1002, "}");
    const AcDbObjectPointer<AcDbLine> line(id, AcDb::kForWrite);
    ASSERT_EQ(line->setXData(head), Acad::eOk);
    resbuf* const back = line->xData("vndk_test");
    const resbuf* a = head;
    const resbuf* b = back;
    for (; a && b; a = a->rbnext, b = b->rbnext) {
        ASSERT_EQ(a->restype, b->restype);
        if (acdbGroupCodeToType(a->restype) == RTSTR)
            EXPECT_STREQ(a->resval.rstring, b->resval.rstring);
        else
            EXPECT_EQ(std::memcmp(&a->resval, &b->resval, a->restype == 1070 ? 2 : a->restype == 1071 ? 4 : 8), 0)
                << a->restype;
    }
    EXPECT_TRUE(!a && !b) << "lists of the same length";
    acutRelRb(head);
    acutRelRb(back);
    EXPECT_EQ(line->xData("OTHER"), nullptr);
}

TEST_F(XData, RefusesWhatAFileCannotHold) {
    database.registerApplication("APP");
    const AcDbObjectPointer<AcDbLine> line(appendLine(), AcDb::kForWrite);
    const auto set = [&](int type, const char* value, const char* application = "APP") {
        resbuf* tail = nullptr;
        resbuf* const head = text(tail, 1001, application);
        text(tail, type, value);
        const Acad::ErrorStatus status = line->setXData(head);
        acutRelRb(head);
        return status;
    };
    EXPECT_EQ(set(1000, "x", "UNKNOWN"), Acad::eRegappIdNotFound);
    EXPECT_EQ(set(1, "x"), Acad::eInvalidResBuf) << "a group code of entities";
    EXPECT_EQ(set(1003, "no such layer"), Acad::eInvalidResBuf);
    EXPECT_EQ(set(1000, std::string(256, 'x').c_str()), Acad::eInvalidResBuf);
    EXPECT_EQ(line->xData(), nullptr) << "nothing was changed";
    EXPECT_EQ(set(1000, "x"), Acad::eOk);
    resbuf* tail = nullptr;
    resbuf* const bare = text(tail, 1001, "APP");
    EXPECT_EQ(line->setXData(bare), Acad::eOk);
    EXPECT_EQ(line->xData(), nullptr) << "a bare application removes";
    acutRelRb(bare);
}

TEST(PackedXData, DamagedItemsEndTheWalk) {
    const struct {
        const char* what;
        std::string bytes;
        int good;
    } cases[] = {
        {"text beyond the end", std::string("\0\x05\0\x1e" "ab", 6), 0},
        {"a code that doesn't exist", std::string("\x07", 1), 0},
        {"a double cut short", std::string("\x46\x01\0\x28\0\0", 6), 1},
        {"nothing behind the code", std::string("\x46\x01\0\x04", 4), 1},
    };
    for (const auto& c : cases) {
        AcDbXDataReader reader(c.bytes);
        AcDbXDataItem item;
        int good = 0;
        while (reader.next(item))
            ++good;
        EXPECT_EQ(good, c.good) << c.what;
        EXPECT_TRUE(reader.damaged()) << c.what;
    }
}

} // namespace
