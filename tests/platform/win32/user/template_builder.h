// Builds dialog and menu templates, byte by byte, as a resource compiler would.
//
//     const auto bytes = DialogBuilder(DS_SETFONT | WS_POPUP).font(8, "MS Sans Serif").size(200, 100)
//                            .control("Button", "OK", WS_TABSTOP | BS_DEFPUSHBUTTON, IDOK, {10, 10, 50, 14}).bytes();
#pragma once

#include "win32/dialog.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace vndk::test {

class Bytes {
public:
    Bytes& word(unsigned value) {
        data_.push_back(static_cast<std::uint8_t>(value));
        data_.push_back(static_cast<std::uint8_t>(value >> 8));
        return *this;
    }
    Bytes& dword(std::uint32_t value) { return word(value & 0xFFFF).word(value >> 16); }
    Bytes& byte(unsigned value) {
        data_.push_back(static_cast<std::uint8_t>(value));
        return *this;
    }
    Bytes& text(std::string_view text) {
        for (const char each : text)
            word(static_cast<unsigned char>(each));
        return word(0);
    }
    Bytes& align(std::size_t boundary = 4) {
        while (data_.size() % boundary != 0)
            data_.push_back(0);
        return *this;
    }
    Bytes& append(const std::vector<std::uint8_t>& more) {
        data_.insert(data_.end(), more.begin(), more.end());
        return *this;
    }
    [[nodiscard]] const std::vector<std::uint8_t>& data() const { return data_; }
    [[nodiscard]] std::size_t size() const { return data_.size(); }
    void setWord(std::size_t at, unsigned value) {
        data_[at] = static_cast<std::uint8_t>(value);
        data_[at + 1] = static_cast<std::uint8_t>(value >> 8);
    }

private:
    std::vector<std::uint8_t> data_;
};

/// A class or a text: by name, or by number.
using NameOrNumber = std::variant<std::string, unsigned>;

struct ControlRow {
    NameOrNumber className;
    NameOrNumber text;
    DWORD style = 0;
    DWORD id = 0;
    SIZE size{50, 14};
    POINT at{0, 0};
    DWORD exStyle = 0;
    std::vector<std::uint8_t> creationData;
};

enum class DialogForm { plain, extended };

class DialogBuilder {
public:
    explicit DialogBuilder(DWORD style = WS_POPUP | WS_CAPTION | WS_SYSMENU, DialogForm form = DialogForm::extended)
        : style_(style), form_(form) {}

    DialogBuilder& place(int x, int y) {
        at_ = {x, y};
        return *this;
    }
    DialogBuilder& size(int width, int height) {
        size_ = {width, height};
        return *this;
    }
    DialogBuilder& exStyle(DWORD style) {
        exStyle_ = style;
        return *this;
    }
    DialogBuilder& caption(std::string text) {
        caption_ = std::move(text);
        return *this;
    }
    DialogBuilder& className(NameOrNumber name) {
        className_ = std::move(name);
        return *this;
    }
    DialogBuilder& font(int points, std::string face) {
        style_ |= DS_SETFONT;
        points_ = points;
        face_ = std::move(face);
        return *this;
    }
    DialogBuilder& control(NameOrNumber className, NameOrNumber text, DWORD style, int id, SIZE size = {50, 14}) {
        ControlRow row;
        row.className = std::move(className);
        row.text = std::move(text);
        row.style = style | WS_VISIBLE;
        row.id = static_cast<DWORD>(id);
        row.size = size;
        // One below the other.
        row.at = {5, static_cast<LONG>(5 + 16 * rows_.size())};
        rows_.push_back(std::move(row));
        return *this;
    }
    DialogBuilder& add(ControlRow row) {
        rows_.push_back(std::move(row));
        return *this;
    }
    /// Of the control added last.
    DialogBuilder& data(std::vector<std::uint8_t> bytes) {
        rows_.back().creationData = std::move(bytes);
        return *this;
    }
    DialogBuilder& without(DWORD style) {
        rows_.back().style &= ~style;
        return *this;
    }

    [[nodiscard]] std::vector<std::uint8_t> bytes() const {
        Bytes out;
        writeHead(out);
        for (const ControlRow& row : rows_)
            writeControl(out, row);
        return out.data();
    }

private:
    [[nodiscard]] bool extended() const { return form_ == DialogForm::extended; }

    static void writeName(Bytes& out, const NameOrNumber& name) {
        if (const auto* number = std::get_if<unsigned>(&name))
            out.word(0xFFFF).word(*number);
        else
            out.text(std::get<std::string>(name));
    }
    static void writePlace(Bytes& out, POINT at, SIZE size) {
        out.word(static_cast<unsigned>(at.x)).word(static_cast<unsigned>(at.y));
        out.word(static_cast<unsigned>(size.cx)).word(static_cast<unsigned>(size.cy));
    }
    void writeHead(Bytes& out) const {
        if (extended())
            out.word(1).word(0xFFFF).dword(0).dword(exStyle_).dword(style_);
        else
            out.dword(style_).dword(exStyle_);
        out.word(static_cast<unsigned>(rows_.size()));
        writePlace(out, at_, size_);
        out.word(0); // menu
        writeName(out, className_);
        out.text(caption_);
        if ((style_ & DS_SETFONT) == 0)
            return;
        out.word(static_cast<unsigned>(points_));
        if (extended())
            out.word(400).byte(0).byte(1);
        out.text(face_);
    }
    void writeControl(Bytes& out, const ControlRow& row) const {
        out.align();
        if (extended())
            out.dword(0).dword(row.exStyle).dword(row.style);
        else
            out.dword(row.style).dword(row.exStyle);
        writePlace(out, row.at, row.size);
        if (extended())
            out.dword(row.id);
        else
            out.word(row.id & 0xFFFF);
        writeName(out, row.className);
        writeName(out, row.text);
        const auto count = static_cast<unsigned>(row.creationData.size());
        // The old form counts the size itself.
        out.word(count == 0 ? 0 : extended() ? count : count + 2);
        out.append(row.creationData);
    }

    DWORD style_;
    DialogForm form_;
    DWORD exStyle_ = 0;
    POINT at_{0, 0};
    SIZE size_{200, 150};
    std::string caption_;
    NameOrNumber className_ = std::string();
    int points_ = 8;
    std::string face_;
    std::vector<ControlRow> rows_;
};

/// Compiled resources with one entry.
inline std::vector<std::uint8_t> compiledResource(unsigned type, unsigned name, const std::vector<std::uint8_t>& data) {
    Bytes out;
    out.dword(0).dword(32).word(0xFFFF).word(0).word(0xFFFF).word(0).dword(0).word(0).word(0).dword(0).dword(0);
    out.dword(static_cast<std::uint32_t>(data.size())).dword(32);
    out.word(0xFFFF).word(type).word(0xFFFF).word(name);
    out.dword(0).word(0).word(0).dword(0).dword(0);
    out.append(data).align();
    return out.data();
}

} // namespace vndk::test
