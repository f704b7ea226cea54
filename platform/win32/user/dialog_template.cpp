#include "user/dialog_template.h"

#include "win32/dialog.h"
#include "win32/error.h"

#include <array>

namespace vndk::win32 {

namespace {

constexpr WORD extendedVersion = 1;
constexpr WORD extendedMark = 0xFFFF;

// Classes that templates name by number, from 0x80 on.
constexpr std::array<const char*, 6> numberedClasses = {"Button", "Edit", "Static", "ListBox", "ScrollBar", "ComboBox"};
constexpr unsigned firstNumberedClass = 0x80;

std::string classOf(const TemplateName& name) {
    if (name.kind != TemplateName::Kind::number)
        return name.text;
    const unsigned index = name.number - firstNumberedClass;
    return index < numberedClasses.size() ? numberedClasses[index] : std::string();
}

RECT readUnits(TemplateReader& reader) {
    RECT units{};
    units.left = reader.shortInteger();
    units.top = reader.shortInteger();
    units.right = reader.shortInteger();
    units.bottom = reader.shortInteger();
    return units;
}

bool isExtended(std::span<const std::uint8_t> bytes) {
    TemplateReader reader(bytes);
    return reader.word() == extendedVersion && reader.word() == extendedMark;
}

std::optional<DialogFont> readFont(TemplateReader& reader, bool extended) {
    DialogFont font;
    font.points = reader.word();
    if (font.points == messageBoxFontSize)
        return font;
    if (extended) {
        font.weight = reader.word();
        font.italic = reader.byte() != 0;
        font.charset = reader.byte();
    }
    font.face = reader.text();
    return font;
}

// The number of controls is returned: they follow.
int readHead(TemplateReader& reader, DialogTemplate& dialog) {
    if (dialog.extended) {
        reader.dword(); // version and mark
        reader.dword(); // help id
        dialog.exStyle = reader.dword();
        dialog.style = reader.dword();
    } else {
        dialog.style = reader.dword();
        dialog.exStyle = reader.dword();
    }
    const int controls = reader.word();
    dialog.units = readUnits(reader);
    dialog.menu = reader.name();
    dialog.className = reader.name();
    dialog.caption = reader.text();
    if ((dialog.style & DS_SETFONT) != 0)
        dialog.font = readFont(reader, dialog.extended);
    return controls;
}

const std::uint8_t* readCreationData(TemplateReader& reader, bool extended) {
    TemplateReader atSize = reader;
    const std::size_t size = reader.word();
    if (size == 0)
        return nullptr;
    // In the old form the size counts itself.
    constexpr std::size_t sizeOfSize = 2;
    if (!extended && size < sizeOfSize)
        return nullptr;
    reader.take(extended ? size : size - sizeOfSize);
    const auto whole = atSize.take(extended ? size + sizeOfSize : size);
    return whole.empty() ? nullptr : whole.data();
}

DialogControl readControl(TemplateReader& reader, bool extended) {
    reader.alignTo(4);
    DialogControl control;
    if (extended) {
        reader.dword(); // help id
        control.exStyle = reader.dword();
        control.style = reader.dword();
    } else {
        control.style = reader.dword();
        control.exStyle = reader.dword();
    }
    control.units = readUnits(reader);
    if (extended) {
        control.id = reader.dword();
    } else {
        // 0xFFFF is what labels have: -1 in 16 bits.
        control.id = reader.word();
    }
    control.className = classOf(reader.name());
    control.text = reader.name();
    control.creationData = readCreationData(reader, extended);
    return control;
}

} // namespace

std::optional<DialogTemplate> parseDialogTemplate(std::span<const std::uint8_t> bytes) {
    DialogTemplate dialog;
    dialog.extended = isExtended(bytes);
    TemplateReader reader(bytes);
    for (int left = readHead(reader, dialog); left > 0 && !reader.failed(); --left)
        dialog.controls.push_back(readControl(reader, dialog.extended));
    if (reader.failed())
        return std::nullopt;
    return dialog;
}

bool readDialogTemplate(std::span<const std::uint8_t> dialogTemplate, DialogTemplateFacts& facts) {
    const auto dialog = parseDialogTemplate(dialogTemplate);
    if (!dialog) {
        SetLastError(ERROR_INVALID_DATA);
        return false;
    }
    facts = {};
    facts.style = dialog->style;
    facts.exStyle = dialog->exStyle;
    facts.controls = static_cast<int>(dialog->controls.size());
    const RECT& units = dialog->units;
    facts.units = {units.left, units.top, units.left + units.right, units.top + units.bottom};
    facts.caption = dialog->caption;
    if (dialog->font) {
        facts.pointSize = dialog->font->points;
        facts.fontFace = dialog->font->face;
    }
    return true;
}

} // namespace vndk::win32
