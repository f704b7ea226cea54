#include "support/json.h"
#include "vondrake/json_writer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace vndk::app {
namespace {

using test::Json;

std::string written(const std::function<void(JsonWriter&)>& write) {
    std::string out;
    {
        JsonWriter json([&out](std::string_view piece) { out += piece; });
        write(json);
    }
    return out;
}

std::string writtenText(std::string_view text) {
    return written([text](JsonWriter& json) { json.text(text); });
}

TEST(JsonWriter, NumbersComeBackBitByBit) {
    for (const double value : {0.0, -0.0, 0.1, 1.0 / 3, 1e300, -5e-324, 123456789.123456789, 6066.0495666119996,
                               std::numeric_limits<double>::max()}) {
        const std::string text = written([value](JsonWriter& json) { json.number(value); });
        EXPECT_EQ(std::signbit(Json::parse(text).number()), std::signbit(value)) << text;
        EXPECT_EQ(Json::parse(text).number(), value) << text;
    }
    for (const double value : {std::numeric_limits<double>::infinity(), std::nan("")})
        EXPECT_EQ(written([value](JsonWriter& json) { json.number(value); }), "null");
}

TEST(JsonWriter, TextIsEscapedAndAlwaysUtf8) {
    const struct {
        std::string_view text, json;
    } cases[] = {
        {"", R"("")"},
        {"a\"b\\c", R"("a\"b\\c")"},
        {std::string_view("\0\n\x1f\x7f", 4), R"("\u0000\u000a\u001f\u007f")"},
        {"\xC3\xA9\xE2\x82\xAC\xF0\x9F\x8F\xA0", "\"\xC3\xA9\xE2\x82\xAC\xF0\x9F\x8F\xA0\""},
        {"\xE9", "\"\xEF\xBF\xBD\""},                                                 // cut off
        {"\xC0\x80", "\"\xEF\xBF\xBD\xEF\xBF\xBD\""},                                 // overlong
        {"\xED\xA0\x80", "\"\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\""},                 // surrogate
        {"\xF4\x90\x80\x80", "\"\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\""}, // beyond the last
    };
    for (const auto& row : cases)
        EXPECT_EQ(writtenText(row.text), row.json);
}

TEST(JsonWriter, NestsAndSeparates) {
    const Json value = Json::parse(written([](JsonWriter& json) {
        json.beginObject();
        json.key("empty").beginArray();
        json.end();
        json.key("items").beginArray();
        for (const int64_t n : {1, 2}) {
            json.item().beginObject();
            json.key("n").number(n);
            json.key("yes").boolean(true);
            json.key("nothing").null();
            json.end();
        }
        json.end();
        json.end();
    }));
    EXPECT_TRUE(value["empty"].isArray());
    ASSERT_EQ(value["items"].size(), 2u);
    EXPECT_EQ(value["items"][1]["n"].number(), 2);
    EXPECT_EQ(value["items"][1]["yes"].number(), 1);
    EXPECT_TRUE(value["items"][1].has("nothing") && value["items"][1]["nothing"].isNull());
}

TEST(JsonWriter, LongOutputComesInPieces) {
    size_t pieces = 0, bytes = 0, longest = 0;
    {
        JsonWriter json([&](std::string_view piece) {
            ++pieces;
            bytes += piece.size();
            longest = std::max(longest, piece.size());
        });
        json.beginArray();
        for (int i = 0; i < 100'000; ++i)
            json.item().text("0123456789");
        json.end();
    }
    EXPECT_GT(bytes, 1'000'000u);
    EXPECT_GT(pieces, 10u);
    EXPECT_LT(longest, 100'000u);
}

} // namespace
} // namespace vndk::app
