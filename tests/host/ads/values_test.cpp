#include "ads/values.h"

#include "lisp/interpreter.h"
#include "lisp/printer.h"

#include <gtest/gtest.h>

#include <string>

using namespace vndk::host;
using namespace vndk::lisp;

namespace {

struct Silent : HostLink {
    void print(std::string_view) override {}
};

/// The types and values of a list in one line.
std::string show(const resbuf* list) {
    std::string text;
    char buffer[64];
    for (; list; list = list->rbnext) {
        text += std::to_string(list->restype);
        switch (list->restype) {
        case RTSTR:
            text += std::string(":") + list->resval.rstring;
            break;
        case RTSHORT:
            text += ":" + std::to_string(list->resval.rint);
            break;
        case RTLONG:
            text += ":" + std::to_string(list->resval.rlong);
            break;
        case RTREAL:
            std::snprintf(buffer, sizeof buffer, ":%g", list->resval.rreal);
            text += buffer;
            break;
        case RTPOINT:
        case RT3DPOINT:
            std::snprintf(buffer, sizeof buffer, ":%g,%g,%g", list->resval.rpoint[0], list->resval.rpoint[1],
                          list->resval.rpoint[2]);
            text += buffer;
            break;
        default:
            break;
        }
        text += ' ';
    }
    return text;
}

class ValuesTest : public testing::Test {
protected:
    /// The elements of a list, evaluated, as values.
    std::vector<Value> values(const std::string& expression) {
        auto list = lisp.evaluateText(expression);
        EXPECT_TRUE(list) << expression;
        std::vector<Value> result;
        for (const Value* rest = &list.value(); rest->isCons(); rest = &rest->cdr())
            result.push_back(rest->car());
        return result;
    }
    Silent link;
    Interpreter lisp{link};
};

} // namespace

TEST_F(ValuesTest, argumentsBecomeBuffersOfThePublishedTypes) {
    const struct {
        const char* list;
        const char* buffers;
    } cases[] = {
        {"(list \"DESK\" (list 1.0 2.0 3.0))", "5005:DESK 5009:1,2,3 "},
        {"(list \"DESK\" (list 1.0 2.0))", "5005:DESK 5002:1,2,0 "},
        {"(list (list 1 2 3))", "5009:1,2,3 "},
        {"(list 1 32767 32768 -32768 -32769)", "5003:1 5003:32767 5010:32768 5003:-32768 5010:-32769 "},
        {"(list 1.5 nil T \"\")", "5001:1.5 5019 5021 5005: "},
        {"'((1 2 3 4))", "5016 5003:1 5003:2 5003:3 5003:4 5017 "},
        {"'((1))", "5016 5003:1 5017 "},
        {"'((\"a\" (1.0 2.0) ((\"b\"))))", "5016 5005:a 5002:1,2,0 5016 5016 5005:b 5017 5017 5017 "},
        {"'((1 . 2))", "5016 5003:1 5018 5003:2 5017 "},
        {"'((1 2 . 3))", "5016 5003:1 5003:2 5018 5003:3 5017 "},
        {"'(((1) 5) 6)", "5016 5016 5003:1 5017 5003:5 5017 5003:6 "},
    };
    for (const auto& c : cases) {
        const auto items = values(c.list);
        resbuf* const buffers = toResbufs(items);
        EXPECT_EQ(show(buffers), c.buffers) << c.list;
        acutRelRb(buffers);
    }
    EXPECT_EQ(toResbufs({}), nullptr);
    EXPECT_EQ(toResbufs(values("(list 1 car)")), nullptr) << "a function has no form";
    EXPECT_EQ(toResbufs(values("(list 'symbol)")), nullptr);
}

TEST_F(ValuesTest, listsComeBackAsTheyWent) {
    for (const char* text :
         {"(\"a\" (1.0 2.0) ((\"b\")) (1 . 2))", "(((1) 5) 6 nil T)", "((1 2 3 4) (\"x\" . \"y\"))"}) {
        resbuf* const buffers = toResbufs(values(std::string("'") + text));
        const auto list = toList(buffers);
        ASSERT_TRUE(list) << text;
        EXPECT_EQ(toText(*list, PrintStyle::Readable), text);
        acutRelRb(buffers);
    }
}

TEST_F(ValuesTest, wrongNestingIsRefused) {
    for (const std::initializer_list<int>& types :
         {std::initializer_list<int>{RTLB}, {RTLE}, {RTLB, RTLE, RTLE}, {RTDOTE}, {RTLB, RTDOTE, RTLE}}) {
        resbuf* list = nullptr;
        resbuf** tail = &list;
        for (const int type : types) {
            *tail = acutNewRb(type);
            tail = &(*tail)->rbnext;
        }
        EXPECT_FALSE(toList(list));
        acutRelRb(list);
    }
}

TEST_F(ValuesTest, deepListsDontExhaustTheStack) {
    Value deep;
    for (int i = 0; i < 300'000; ++i)
        deep = Value::list({Value::string("x"), deep});
    resbuf* const buffers = toResbufs(std::vector<Value>{deep});
    ASSERT_NE(buffers, nullptr);
    EXPECT_TRUE(toList(buffers));
    acutRelRb(buffers);
}
