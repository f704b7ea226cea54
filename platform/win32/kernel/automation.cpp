#include "win32/automation.h"

#include <cstddef>
#include <cstdlib>
#include <cstring>

namespace {

// The length in bytes stands in the four bytes before the text; a block keeps the text aligned.
constexpr std::size_t headBytes = alignof(std::max_align_t);

char* blockOf(BSTR text) { return reinterpret_cast<char*>(text) - headBytes; }

} // namespace

BSTR SysAllocStringLen(const OLECHAR* text, UINT length) {
    const std::size_t bytes = std::size_t{length} * sizeof(OLECHAR);
    auto* block = static_cast<char*>(std::calloc(1, headBytes + bytes + sizeof(OLECHAR)));
    if (block == nullptr)
        return nullptr;
    const auto counted = static_cast<std::uint32_t>(bytes);
    std::memcpy(block + headBytes - sizeof counted, &counted, sizeof counted);
    if (text != nullptr)
        std::memcpy(block + headBytes, text, bytes);
    return reinterpret_cast<BSTR>(block + headBytes);
}

void SysFreeString(BSTR text) {
    if (text != nullptr)
        std::free(blockOf(text));
}

UINT SysStringLen(BSTR text) {
    if (text == nullptr)
        return 0;
    std::uint32_t bytes = 0;
    std::memcpy(&bytes, reinterpret_cast<const char*>(text) - sizeof bytes, sizeof bytes);
    return bytes / sizeof(OLECHAR);
}

void VariantInit(VARIANT* variant) { *variant = {}; }

HRESULT VariantClear(VARIANT* variant) {
    if (variant == nullptr)
        return E_INVALIDARG;
    if (variant->vt == VT_BSTR)
        SysFreeString(variant->bstrVal);
    if (variant->vt == VT_DISPATCH && variant->pdispVal != nullptr)
        variant->pdispVal->Release();
    VariantInit(variant);
    return S_OK;
}
