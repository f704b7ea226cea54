#include "ads/values.h"

#include "lisp/symbol_table.h"

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

namespace vndk::host {

using lisp::Type;
using lisp::Value;

namespace {

/// Appends buffers to a list that grows.
class Chain {
public:
    resbuf& add(short type) {
        *tail_ = acutNewRb(type);
        resbuf& added = **tail_;
        tail_ = &added.rbnext;
        return added;
    }
    resbuf* release() { return std::exchange(head_, nullptr); }
    ~Chain() { acutRelRb(head_); }

private:
    resbuf* head_ = nullptr;
    resbuf** tail_ = &head_;
};

/// A list of two or three numbers; its length, or 0.
int pointLength(const Value& list, double* xyz) {
    int count = 0;
    const Value* rest = &list;
    for (; rest->isCons(); rest = &rest->cdr()) {
        if (count == 3 || !rest->car().isNumber())
            return 0;
        xyz[count++] = rest->car().number();
    }
    return rest->isNil() && count >= 2 ? count : 0;
}

/// Lists nest as deep as LISP lets them, so the walk keeps its own stack of what comes behind a sublist.
bool addValue(Chain& chain, const Value& first) {
    std::vector<const Value*> behind;
    const Value* value = &first;
    for (;;) {
        double xyz[3];
        if (value->isCons() && !pointLength(*value, xyz)) {
            chain.add(RTLB);
            behind.push_back(&value->cdr());
            value = &value->car();
            continue;
        }
        if (!setResbuf(chain.add(RTNIL), *value))
            return false;
        while (!behind.empty()) {
            const Value* rest = behind.back();
            behind.pop_back();
            if (rest->isCons()) {
                behind.push_back(&rest->cdr());
                value = &rest->car();
                break;
            }
            if (!rest->isNil()) {
                chain.add(RTDOTE);
                if (!setResbuf(chain.add(RTNIL), *rest))
                    return false;
            }
            chain.add(RTLE);
            if (behind.empty())
                return true;
        }
        if (behind.empty())
            return true;
    }
}

Value point(const ads_real* xyz, int count) {
    lisp::ListBuilder list;
    for (int i = 0; i < count; ++i)
        list.append(Value::real(xyz[i]));
    return list.finish();
}

} // namespace

bool setResbuf(resbuf& buffer, const Value& value) {
    switch (value.type()) {
    case Type::Nil:
        buffer.restype = RTNIL;
        return true;
    case Type::Symbol:
        buffer.restype = RTT;
        return value.identical(Value::t());
    case Type::Int: {
        const int32_t number = value.integer();
        using Short = std::numeric_limits<short>;
        buffer.restype = number >= Short::min() && number <= Short::max() ? RTSHORT : RTLONG;
        if (buffer.restype == RTSHORT)
            buffer.resval.rint = static_cast<short>(number);
        else
            buffer.resval.rlong = number;
        return true;
    }
    case Type::Real:
        buffer.restype = RTREAL;
        buffer.resval.rreal = value.real();
        return true;
    case Type::String:
        buffer.restype = RTSTR;
        buffer.resval.rstring = acutNewString(value.text());
        return true;
    case Type::Ename:
    case Type::PickSet:
        buffer.restype = value.isEname() ? RTENAME : RTPICKS;
        buffer.resval.rlname[0] = static_cast<intptr_t>(value.id());
        buffer.resval.rlname[1] = 0;
        return true;
    case Type::Cons: {
        double xyz[3] = {0, 0, 0};
        const int count = pointLength(value, xyz);
        if (count == 0)
            return false;
        buffer.restype = count == 2 ? RTPOINT : RT3DPOINT;
        std::copy(xyz, xyz + 3, buffer.resval.rpoint);
        return true;
    }
    default:
        return false;
    }
}

resbuf* toResbufs(std::span<const Value> values) {
    Chain chain;
    for (const Value& value : values)
        if (!addValue(chain, value))
            return nullptr;
    return chain.release();
}

Value toValue(const resbuf& buffer) {
    if (buffer.restype == RTT)
        return Value::t();
    switch (acdbGroupCodeToType(buffer.restype)) {
    case RTREAL:
    case RTANG:
        return Value::real(buffer.resval.rreal);
    case RTSHORT:
        return Value::integer(buffer.resval.rint);
    case RTLONG:
        return Value::integer(buffer.resval.rlong);
    case RTSTR:
        return buffer.resval.rstring ? Value::string(buffer.resval.rstring) : Value();
    case RTPOINT:
        return point(buffer.resval.rpoint, 2);
    case RT3DPOINT:
        return point(buffer.resval.rpoint, 3);
    case RTENAME:
        return buffer.resval.rlname[0] ? Value::ename(static_cast<uint64_t>(buffer.resval.rlname[0])) : Value();
    case RTPICKS:
        return Value::pickSet(static_cast<uint64_t>(buffer.resval.rlname[0]));
    default:
        return Value();
    }
}

std::optional<Value> toList(const resbuf* list) {
    struct Open {
        lisp::ListBuilder items;
        Value tail;
        bool dotted = false;
    };
    std::vector<Open> open(1);
    const auto deliver = [&open](Value value) {
        Open& top = open.back();
        if (top.dotted)
            top.tail = std::move(value);
        else
            top.items.append(std::move(value));
    };
    for (; list; list = list->rbnext) {
        if (list->restype == RTLB) {
            open.emplace_back();
        } else if (list->restype == RTDOTE) {
            if (open.back().items.empty())
                return std::nullopt;
            open.back().dotted = true;
        } else if (list->restype == RTLE) {
            if (open.size() == 1)
                return std::nullopt;
            Value closed = open.back().items.finish(std::move(open.back().tail));
            open.pop_back();
            deliver(std::move(closed));
        } else {
            deliver(toValue(*list));
        }
    }
    if (open.size() != 1)
        return std::nullopt;
    return open.back().items.finish();
}

Value toAssociations(const resbuf* list) {
    lisp::ListBuilder pairs;
    for (; list; list = list->rbnext)
        pairs.append(Value::cons(Value::integer(list->restype), toValue(*list)));
    return pairs.finish();
}

} // namespace vndk::host
