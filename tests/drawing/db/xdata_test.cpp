#include "database_fixture.h"

#include "db/xdata.h"
#include "ge/matrix3d.h"

#include <cmath>
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
            EXPECT_EQ(std::memcmp(&a->resval, &b->resval,
                                  a->restype == 1070   ? 2
                                  : a->restype == 1071 ? 4
                                                       : 8),
                      0)
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

TEST_F(XData, FollowsItsEntity) {
    database.registerApplication("APP");
    const AcDbObjectId id = appendLine();
    const AcDbObjectPointer<AcDbLine> line(id, AcDb::kForWrite);
    resbuf* tail = nullptr;
    resbuf* const head = text(tail, 1001, "APP");
    for (const int code : {1010, 1011, 1012, 1013})
        item(tail, code)->resval.rpoint[0] = 3;
    for (const int code : {1040, 1041, 1042})
        item(tail, code)->resval.rreal = 5;
    text(tail, 1000, "end");
    ASSERT_EQ(line->setXData(head), Acad::eOk);
    acutRelRb(head);
    ASSERT_EQ(line->transformBy(AcGeMatrix3d::translation({1, 0, 0}) *
                                AcGeMatrix3d::rotation(kAcGePi / 2, AcGeVector3d::kZAxis) * AcGeMatrix3d::scaling(2)),
              Acad::eOk);
    resbuf* const back = line->xData("APP");
    std::vector<std::string> found;
    for (const resbuf* rb = back->rbnext; rb; rb = rb->rbnext) {
        const bool isPoint = rb->restype >= 1010 && rb->restype <= 1013;
        const auto rounded = [](double value) { return std::to_string(std::lround(value)); };
        found.push_back(isPoint               ? rounded(rb->resval.rpoint[0]) + "," + rounded(rb->resval.rpoint[1])
                        : rb->restype == 1000 ? rb->resval.rstring
                                              : rounded(rb->resval.rreal));
    }
    acutRelRb(back);
    EXPECT_EQ(found, (std::vector<std::string>{"3,0", "1,6", "0,6", "0,3", "5", "10", "10", "end"}));
}

TEST(PackedXData, DamagedItemsEndTheWalk) {
    const struct {
        const char* what;
        std::string bytes;
        int good;
    } cases[] = {
        {"text beyond the end",
         std::string("\0\x05\0\x1e"
                     "ab",
                     6),
         0},
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
