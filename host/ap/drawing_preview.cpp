#include "ap/drawing_preview.h"

#include "ap/document.h"
#include "ap/drawing_views.h"
#include "db/open.h"
#include "dwg/drawing_writer.h"
#include "ed/display.h"
#include "ed/host.h"
#include "ed/pick.h"
#include "gs/manager.h"

#include <algorithm>
#include <array>
#include <memory>
#include <unordered_map>

namespace vndk::host {

namespace {

constexpr int kWidth = 256, kMostHeight = 256; // of a drawing's picture
constexpr int kIconSize = 32;
constexpr double kMargin = 1.05;
constexpr size_t kColors = 256;
constexpr COLORREF kDark = RGB(0, 0, 0), kLight = RGB(255, 255, 255);

using Picture = win32::Picture;
using Palette = std::vector<uint32_t>;

/// The picture's colours, the most frequent ones first; 256 at most.
Palette paletteOf(const Picture& picture) {
    std::unordered_map<uint32_t, size_t> counts;
    for (const uint32_t pixel : picture.pixels)
        ++counts[pixel & 0xFFFFFF];
    Palette colors;
    for (const auto& [color, count] : counts)
        colors.push_back(color);
    std::sort(colors.begin(), colors.end(),
              [&](uint32_t a, uint32_t b) { return counts[a] != counts[b] ? counts[a] > counts[b] : a < b; });
    if (colors.size() > kColors)
        colors.resize(kColors);
    return colors;
}

int distance(uint32_t a, uint32_t b) {
    int sum = 0;
    for (int shift = 0; shift < 24; shift += 8) {
        const int step = static_cast<int>(a >> shift & 255) - static_cast<int>(b >> shift & 255);
        sum += step * step;
    }
    return sum;
}

class BitmapWriter {
public:
    std::vector<uint8_t> write(const Picture& picture) {
        const Palette palette = paletteOf(picture);
        const int stride = (picture.width + 3) / 4 * 4;
        putHeader(picture, static_cast<uint32_t>(stride * picture.height));
        for (size_t i = 0; i < kColors; ++i)
            put32(i < palette.size() ? palette[i] : 0);
        std::unordered_map<uint32_t, uint8_t> places;
        for (int y = picture.height - 1; y >= 0; --y)
            for (int x = 0; x < stride; ++x)
                bytes_.push_back(x < picture.width ? placeOf(pixel(picture, x, y), palette, places) : uint8_t{0});
        return std::move(bytes_);
    }

private:
    static uint32_t pixel(const Picture& picture, int x, int y) {
        return picture.pixels[static_cast<size_t>(y) * static_cast<size_t>(picture.width) + static_cast<size_t>(x)] &
               0xFFFFFF;
    }
    static uint8_t placeOf(uint32_t color, const Palette& palette, std::unordered_map<uint32_t, uint8_t>& places) {
        const auto [place, isNew] = places.try_emplace(color);
        if (isNew)
            place->second = static_cast<uint8_t>(
                std::min_element(palette.begin(), palette.end(),
                                 [&](uint32_t a, uint32_t b) { return distance(a, color) < distance(b, color); }) -
                palette.begin());
        return place->second;
    }
    void putHeader(const Picture& picture, uint32_t size) {
        put32(40); // the header's size
        put32(static_cast<uint32_t>(picture.width));
        put32(static_cast<uint32_t>(picture.height));
        put16(1); // plane
        put16(8); // bits of a pixel
        put32(0); // not compressed
        put32(size);
        put32(0); // pixels per metre
        put32(0);
        put32(kColors);
        put32(0); // all colours matter
    }
    void put16(uint32_t value) {
        for (int shift = 0; shift < 16; shift += 8)
            bytes_.push_back(static_cast<uint8_t>(value >> shift));
    }
    void put32(uint32_t value) {
        put16(value & 0xFFFF);
        put16(value >> 16);
    }

    std::vector<uint8_t> bytes_;
};

/// The graphics system's objects for one picture.
class Studio {
public:
    Studio(int width, int height, COLORREF background)
        : device_(manager_.createAutoCADOffScreenDevice()), view_(manager_.getGSClassFactory()->createView()) {
        device_->onSize(width, height);
        device_->setBackgroundColor(background);
        device_->add(view_);
    }
    ~Studio() {
        manager_.getGSClassFactory()->deleteView(view_);
        manager_.destroyAutoCADDevice(device_);
        manager_.destroyAutoCADModel(own_);
    }
    Studio(const Studio&) = delete;
    Studio& operator=(const Studio&) = delete;

    /// What the window has prepared serves again.
    AcGsModel& model() {
        Host* const host = Host::current();
        if (host && host->display())
            return host->display()->model();
        if (!own_)
            own_ = manager_.createAutoCADModel();
        return *own_;
    }

    std::vector<uint8_t> take(AcDbObjectId record, const dwg::ActiveView& seen) {
        {
            const AcDbObjectPointer<AcDbBlockTableRecord> block(record);
            if (!block || !view_->add(block.object(), &model()))
                return {};
        }
        view_->setView(eyeOf(seen), seen.center, seen.up, seen.height * 1e-9, seen.height,
                       seen.eye > 0 ? AcGsView::kPerspective : AcGsView::kParallel);
        device_->update();
        return BitmapWriter().write(device_->picture());
    }

    std::vector<uint8_t> takeWhole(AcDbObjectId record) {
        AcDbExtents box;
        if (!model().visibleExtents(record, box))
            return {};
        const double aspect = static_cast<double>(device_->width()) / device_->height();
        return take(record, fittingView({}, box, aspect, kMargin));
    }

private:
    AcGsManager& manager_ = *acgsGetGsManager();
    AcGsDevice* device_;
    AcGsView* view_;
    AcGsModel* own_ = nullptr;
};

double screenAspect(const Host& host) {
    return host.display() ? static_cast<double>(host.display()->width()) / host.display()->height() : 4.0 / 3;
}

} // namespace

std::vector<uint8_t> previewOf(AcApDocument& document) {
    const int height = std::clamp(static_cast<int>(kWidth / screenAspect(document.host())), 1, kMostHeight);
    const bool model = document.database()->tilemode();
    return Studio(kWidth, height, model ? kDark : kLight)
        .take(currentSpace(*document.database()), document.views().current());
}

std::vector<uint8_t> previewOf(AcDbDatabase& database) {
    return Studio(kWidth, kWidth * 3 / 4, kDark).takeWhole(database.modelSpaceId());
}

std::vector<uint8_t> iconOf(AcDbObjectId block) { return Studio(kIconSize, kIconSize, kLight).takeWhole(block); }

void prepareToSave(AcApDocument& document) {
    document.views().store(screenAspect(document.host()));
    dwg::setThumbnailBitmap(*document.database(), previewOf(document));
}

} // namespace vndk::host
