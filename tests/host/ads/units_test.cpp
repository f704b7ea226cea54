// Numbers as text and back, in all units.
#include "ads/ads.h"
#include "host/host_fixture.h"

#include <cmath>
#include <random>

namespace {

constexpr double kPi = 3.14159265358979323846;

class UnitsTest : public HostTest {
protected:
    static std::string length(double value, int unit, int precision) {
        char text[128] = "";
        return acdbRToS(value, unit, precision, text) == RTNORM ? text : "none";
    }
    static std::string angle(double degrees, int unit, int precision) {
        char text[128] = "";
        return acdbAngToS(degrees * kPi / 180, unit, precision, text) == RTNORM ? text : "none";
    }
    void set(const char* variable, int value) { host.variables().set(variable, static_cast<short>(value)); }
};

TEST_F(UnitsTest, ZerosOfFeetAndInchesAndOfDecimalsComeAndGoWithDimzin) {
    const struct {
        int zeroes;
        const char *none, *half, *foot, *both, *decimals;
    } rows[] = {
        {0, "0\"", "1/2\"", "1'", "1'-0 1/2\"", "0.5000"},
        {1, "0'-0\"", "0'-0 1/2\"", "1'-0\"", "1'-0 1/2\"", "0.5000"},
        {2, "0'", "0'-0 1/2\"", "1'", "1'-0 1/2\"", "0.5000"},
        {3, "0\"", "1/2\"", "1'-0\"", "1'-0 1/2\"", "0.5000"},
        {4, "0\"", "1/2\"", "1'", "1'-0 1/2\"", ".5000"},
        {8, "0\"", "1/2\"", "1'", "1'-0 1/2\"", "0.5"},
        {12, "0\"", "1/2\"", "1'", "1'-0 1/2\"", ".5"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE("DIMZIN " + std::to_string(row.zeroes));
        set("DIMZIN", row.zeroes);
        EXPECT_EQ(length(0, 4, 4), row.none);
        EXPECT_EQ(length(0.5, 4, 4), row.half);
        EXPECT_EQ(length(12, 4, 4), row.foot);
        EXPECT_EQ(length(12.5, 4, 4), row.both);
        EXPECT_EQ(length(0.5, 2, 4), row.decimals);
    }
}

TEST_F(UnitsTest, UnitmodeLeavesBlanksOut) {
    const auto shown = [&] {
        return length(17.5, 3, 1) + "|" + length(-17.5, 4, 2) + "|" + length(17.5, 5, 2) + "|" + angle(45.5, 4, 2) +
               "|" + angle(45, 1, 4);
    };
    EXPECT_EQ(shown(), "1'-5.5\"|-1'-5 1/2\"|17 1/2|N 44d30' E|45d0'0\"");
    set("UNITMODE", 1);
    EXPECT_EQ(shown(), "1'5.5\"|-1'5-1/2\"|17-1/2|N44d30'E|45d0'0\"");
}

TEST_F(UnitsTest, MinusOneTakesTheDrawingsOwnUnits) {
    for (const auto& [variable, value] : {std::pair{"LUNITS", 5}, {"LUPREC", 3}, {"AUNITS", 2}, {"AUPREC", 1}})
        set(variable, value);
    EXPECT_EQ(length(2.625, -1, -1), "2 5/8");
    EXPECT_EQ(angle(90, -1, -1), "100.0g");
    double bare = 0;
    ASSERT_EQ(acdbAngToF("50", -1, &bare), RTNORM);
    EXPECT_NEAR(bare, kPi / 4, 1e-12) << "a bare number is in the drawing's units";
    EXPECT_EQ(length(1, 6, 2), "none");
    EXPECT_EQ(length(1, 0, 2), "none");
    EXPECT_EQ(angle(1, 5, 2), "none");
    EXPECT_EQ(length(INFINITY, 2, 2), "none");
    EXPECT_EQ(angle(NAN, 0, 2), "none");
}

TEST_F(UnitsTest, WhatRoundsToAWholeTurnIsNone) {
    EXPECT_EQ(angle(-1e-9, 0, 0), "0");
    EXPECT_EQ(angle(359.9999999, 0, 4), "0.0000");
    EXPECT_EQ(angle(359.9999, 0, 4), "359.9999");
    EXPECT_EQ(angle(359.9999999, 1, 4), "0d0'0\"");
    EXPECT_EQ(angle(359.9999999, 2, 2), "0.00g");
    EXPECT_EQ(angle(359.9999999, 3, 4), "6.2832r");
    EXPECT_EQ(angle(330, 3, 0), "6r");
    EXPECT_EQ(angle(359.9999999, 4, 4), "E");
}

TEST_F(UnitsTest, WhatIsNoNumberIsRefusedAndTouchesNothing) {
    double value = 7;
    for (const char* text : {"", " ", "x", "5x", "1 2 3", "1/0", "1/", "'", "--5", "1e999", "1e308'", "5'6'", "1-",
                             "1'-", "1''", "inf", "nan"})
        EXPECT_EQ(acdbDisToF(text, -1, &value), RTERROR) << text;
    for (const char* text : {"", "x", "45x", "N", "NE", "N 45d", "45d5", "45d10'5", "1e999", "45d E"})
        if (std::string(text) != "N") // an axis is an angle
            EXPECT_EQ(acdbAngToF(text, -1, &value), RTERROR) << text;
    EXPECT_EQ(acdbDisToF(nullptr, -1, &value), RTERROR);
    EXPECT_EQ(acdbDisToF("5", -1, nullptr), RTERROR);
    EXPECT_EQ(value, 7);
}

TEST_F(UnitsTest, EveryTextReadsBackAsWhatItSays) {
    std::mt19937 random(20);
    std::uniform_real_distribution<double> any(-5000, 5000);
    for (int round = 0; round < 20000; ++round) {
        set("UNITMODE", round & 1);
        set("DIMZIN", round / 2 % 16);
        const int unit = round % 5, precision = round / 5 % 9;
        const double size = round % 7 == 0 ? std::round(any(random)) : any(random);
        double back = 0;
        const std::string written = length(size, unit + 1, precision);
        ASSERT_EQ(acdbDisToF(written.c_str(), -1, &back), RTNORM) << written;
        const double step = unit >= 3   ? std::ldexp(1, -precision)
                            : unit == 0 ? std::fabs(size) * std::pow(10, -precision)
                                        : std::pow(10, -precision);
        EXPECT_NEAR(back, size, step * 0.51 + 1e-9) << written;

        const std::string turned = angle(size, unit, precision);
        ASSERT_EQ(acdbAngToF(turned.c_str(), unit, &back), RTNORM) << turned;
        const double apart = std::remainder(back * 180 / kPi - size, 360);
        const double coarsest = unit == 1 || unit == 4 ? (precision == 0   ? 1
                                                          : precision <= 2 ? 1 / 60.0
                                                                           : 1 / 3600.0)
                                : unit == 3            ? 180 / kPi * std::pow(10, -precision)
                                                       : std::pow(10, -precision);
        EXPECT_NEAR(apart, 0, coarsest * 0.51 + 1e-7) << turned << " for " << size;
    }
}

} // namespace
