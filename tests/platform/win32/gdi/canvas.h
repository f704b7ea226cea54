// A picture in memory with a context that paints on it, for tests that look at pixels.
#pragma once

#include "win32/gdi.h"

#include <cstdint>
#include <string>
#include <vector>

constexpr COLORREF kBlack = RGB(0, 0, 0);
constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr COLORREF kGreen = RGB(0, 255, 0);
constexpr COLORREF kBlue = RGB(0, 0, 255);

/// 32 bits, top row first, all pixels white at first.
class Canvas {
public:
    Canvas(int width, int height) : width_(width), height_(height), dc_(CreateCompatibleDC(nullptr)) {
        BITMAPINFO info{};
        info.bmiHeader = {sizeof(BITMAPINFOHEADER), width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        void* bits = nullptr;
        bitmap_ = CreateDIBSection(dc_, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
        pixels_ = static_cast<std::uint32_t*>(bits);
        SelectObject(dc_, bitmap_);
        clear();
    }
    ~Canvas() {
        DeleteDC(dc_); // lets go of what it has selected
        for (HGDIOBJ object : owned_)
            DeleteObject(object);
        DeleteObject(bitmap_);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    [[nodiscard]] HDC dc() const { return dc_; }
    [[nodiscard]] HBITMAP bitmap() const { return bitmap_; }
    [[nodiscard]] int width() const { return width_; }
    [[nodiscard]] int height() const { return height_; }
    [[nodiscard]] std::uint32_t& pixel(int x, int y) { return pixels_[y * width_ + x]; }
    [[nodiscard]] COLORREF color(int x, int y) { return GetPixel(dc_, x, y); }

    void clear(COLORREF color = kWhite) {
        const std::uint32_t argb = (color & 0xFF) << 16 | (color & 0xFF00) | (color >> 16 & 0xFF);
        for (int index = 0; index < width_ * height_; ++index)
            pixels_[index] = argb;
    }

    /// Selects an object that the canvas deletes at its end.
    template <typename Handle>
    void use(Handle object) {
        SelectObject(dc_, object);
        owned_.push_back(object);
    }
    void pen(int style, int width, COLORREF color) { use(CreatePen(style, width, color)); }
    void brush(COLORREF color) { use(CreateSolidBrush(color)); }

    /// One text for each row: '.' white, '#' black, 'R', 'G', 'B' the pure colours, '?' any other.
    [[nodiscard]] std::vector<std::string> rows() const {
        std::vector<std::string> result;
        for (int y = 0; y < height_; ++y) {
            std::string row;
            for (int x = 0; x < width_; ++x)
                row += letter(pixels_[y * width_ + x] & 0xFFFFFF);
            result.push_back(row);
        }
        return result;
    }

private:
    static char letter(std::uint32_t rgb) {
        switch (rgb) {
        case 0xFFFFFF:
            return '.';
        case 0x000000:
            return '#';
        case 0xFF0000:
            return 'R';
        case 0x00FF00:
            return 'G';
        case 0x0000FF:
            return 'B';
        default:
            return '?';
        }
    }

    int width_;
    int height_;
    HDC dc_;
    HBITMAP bitmap_;
    std::uint32_t* pixels_ = nullptr;
    std::vector<HGDIOBJ> owned_;
};

using Rows = std::vector<std::string>;
