#pragma once
/// What a database keeps of the file that it came from: the file's bytes, the codec, the lock.

#include <memory>

#include "db/database.h"
#include "dwg/drawing_lock.h"
#include "dwg/file_image.h"
#include "dwg/object_codec.h"

namespace vndk::dwg {

class DrawingSource : public AcDbObjectSource {
public:
    /// `image` is null for a drawing that was never in a file.
    DrawingSource(AcDbDatabase& database, std::shared_ptr<FileImage> image);

    AcDbObject* decode(AcDbStub& stub) override { return codec_.decode(stub); }
    bool canBe(AcDbStub& stub, const AcRxClass* cls) override { return codec_.canBe(stub, cls); }
    std::vector<AcDbObjectId> readChain(AcDbObjectId owner, AcDbObjectId first, AcDbObjectId last,
                                        bool decoding) override;

    ObjectCodec& codec() { return codec_; }
    const FileImage* image() const { return image_.get(); }

    bool hasLock(const std::string& path) const { return lock_ && lockedPath_ == path; }
    void setLock(std::unique_ptr<DrawingLock> lock, const std::string& path) {
        lock_ = std::move(lock);
        lockedPath_ = path;
    }

    /// Empty: the file keeps the picture that it has.
    const std::vector<uint8_t>& thumbnail() const { return thumbnail_; }
    void setThumbnail(std::vector<uint8_t> bitmap) { thumbnail_ = std::move(bitmap); }

private:
    AcDbDatabase& database_;
    std::shared_ptr<FileImage> image_;
    ObjectCodec codec_;
    std::unique_ptr<DrawingLock> lock_;
    std::string lockedPath_;
    std::vector<uint8_t> thumbnail_;
};

/// The database's source, made now if the drawing is a new one.
DrawingSource& sourceOf(AcDbDatabase& database);

} // namespace vndk::dwg
