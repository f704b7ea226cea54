#include "lisp/symbol_table.h"

#include "code_page.h"

namespace vndk::lisp {

namespace {

constexpr std::size_t initialSlots = 1024;

std::uint32_t hashName(std::string_view name) {
    std::uint32_t hash = 2166136261u;
    for (char c : name)
        hash = (hash ^ static_cast<unsigned char>(upperAscii(c))) * 16777619u;
    return hash;
}

bool sameName(std::string_view name, const std::string& capitals) {
    if (name.size() != capitals.size())
        return false;
    for (std::size_t i = 0; i < name.size(); ++i)
        if (upperAscii(name[i]) != capitals[i])
            return false;
    return true;
}

} // namespace

SymbolTable::SymbolTable() : slots_(initialSlots) {
    // T is the one symbol that all tables share.
    slots_[slotOf("T", hashName("T"))] = &Value::t().symbol();
    ++used_;
}

SymbolTable::~SymbolTable() = default;

/// The slot that holds the name, or the free one where it belongs. The number of slots is a power of two.
std::size_t SymbolTable::slotOf(std::string_view name, std::uint32_t hash) const {
    std::size_t slot = hash & (slots_.size() - 1);
    while (slots_[slot] && !sameName(name, slots_[slot]->name()))
        slot = (slot + 1) & (slots_.size() - 1);
    return slot;
}

Symbol* SymbolTable::find(std::string_view name) const { return slots_[slotOf(name, hashName(name))]; }

Symbol& SymbolTable::intern(std::string_view name) {
    const std::uint32_t hash = hashName(name);
    const std::size_t slot = slotOf(name, hash);
    if (slots_[slot])
        return *slots_[slot];
    std::string capitals(name);
    for (char& c : capitals)
        c = upperAscii(c);
    Symbol& symbol = symbols_.emplace_back(std::move(capitals));
    slots_[slot] = &symbol;
    if (++used_ * 2 > slots_.size())
        grow();
    return symbol;
}

void SymbolTable::grow() {
    std::vector<Symbol*> old(slots_.size() * 2);
    old.swap(slots_);
    for (Symbol* symbol : old)
        if (symbol)
            slots_[slotOf(symbol->name(), hashName(symbol->name()))] = symbol;
}

} // namespace vndk::lisp
