// Fields of images and wipeouts.
#include "db/raster_image.h"
#include "dwg/object_types.h"

namespace vndk::dwg {

namespace {

using namespace code;
using Data = AcDbRasterImage::Data;

/// Two corners of a rectangle, or a number of corners and these.
void readClip(FieldReader& r, Data& image) {
    image.clipType = r.bits.BS();
    if (image.clipType != AcDbRasterImage::kRect && image.clipType != AcDbRasterImage::kPoly)
        return static_cast<void>(r.bits.fail());
    image.clip.resize(image.clipType == AcDbRasterImage::kRect ? 2 : r.count(r.bits.BL(), 128));
    for (AcGePoint2d& p : image.clip)
        p = RD2::read<AcGePoint2d>(r);
}

void writeClip(FieldWriter& w, const Data& image) {
    std::vector<AcGePoint2d> corners = image.clip;
    w.bits.BS(image.clipType);
    if (image.clipType == AcDbRasterImage::kRect)
        corners.resize(2);
    else
        w.bits.BL(static_cast<uint32_t>(corners.size()));
    for (const AcGePoint2d& p : corners)
        RD2::write(w, p);
}

constexpr FieldRow kImageRows[] = {
    row<BL, &Data::classVersion>("class version"),
    row<P3, &Data::origin>("insertion point"),
    row<P3, &Data::u>("u vector"),
    row<P3, &Data::v>("v vector"),
    row<RD2, &Data::size>("size"),
    row<BS, &Data::display>("display properties"),
    row<B, &Data::clipping>("clipping"),
    row<RC, &Data::brightness>("brightness"),
    row<RC, &Data::contrast>("contrast"),
    row<RC, &Data::fade>("fade"),
    customRow<Data, readClip, writeClip>("clip boundary"),
    row<H<5>, &Data::definition>("definition"),
    row<H<3>, &Data::reactor>("reactor"),
};

constexpr ObjectType kTypes[] = {
    dataType<AcDbRasterImage, kImageRows>(0, "IMAGE"),
    dataType<AcDbWipeout, kImageRows>(0, "WIPEOUT"),
};

} // namespace

std::span<const ObjectType> imageTypes() { return kTypes; }

} // namespace vndk::dwg
