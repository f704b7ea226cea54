#include "dwg/drawing_source.h"

#include "db/stub.h"

#include <algorithm>

namespace vndk::dwg {

namespace {

/// Whether the file counts a NUL behind its texts: the model space's record, which is never nameless, tells.
bool countsNul(const FileImage& image, const FrameContext& context) {
    const ObjectRecord* const record = image.find(image.header().MODEL_SPACE);
    ObjectFrame frame;
    if (!record || !parseFrame(image.bytesOf(*record), context, frame))
        return false;
    BitReader reader(image.bytesOf(*record).data(), frame.fieldsBit, frame.handlesBit);
    const uint16_t length = reader.BS();
    if (length == 0)
        return false;
    reader.skip((size_t{length} - 1) * 8);
    const uint8_t last = reader.RC();
    return !reader.failed() && last == 0;
}

/// The classes without which other programs don't take a release 15 file.
std::vector<ClassRecord> classesOfNewDrawing() {
    constexpr const char* kNames[][2] = {
        {"AcDbDictionaryWithDefault", "ACDBDICTIONARYWDFLT"},
        {"AcDbPlaceHolder", "ACDBPLACEHOLDER"},
        {"AcDbLayout", "LAYOUT"},
    };
    std::vector<ClassRecord> classes;
    uint16_t number = kFirstClassNumber;
    for (const auto& [cppName, dxfName] : kNames) {
        ClassRecord& record = classes.emplace_back();
        record.number = number++;
        record.appName = "ObjectDBX Classes";
        record.cppName = cppName;
        record.dxfName = dxfName;
    }
    return classes;
}

/// Follows a chain and notices when it comes back to where it was. A chain whose links agree in both directions
/// can't; only one with a contradiction costs the memory of where it has been.
class ChainWalk {
public:
    ChainWalk(const ObjectCodec& codec, AcDbDatabase& database, AcDbObjectId owner, bool decoding)
        : codec_(codec), database_(database), owner_(owner), decoding_(decoding) {}

    std::vector<AcDbObjectId> run(AcDbObjectId first, AcDbObjectId last) {
        const AcDbStub* previous = nullptr;
        AcDbStub* stub = first.stub();
        // The few parts of an entity mostly have handles that follow each other.
        constexpr uint32_t kFew = 16;
        if (stub && !last.isNull() && stub->index <= last.stub()->index)
            ids_.reserve(std::min(last.stub()->index - stub->index + 1, kFew));
        while (stub) {
            Neighbours links;
            if (!linksOf(*stub, links) || !enter(*stub, previous, links.previous)) {
                warn(*stub);
                break;
            }
            ids_.push_back(AcDbObjectId(stub));
            if (AcDbObjectId(stub) == last || links.next == 0)
                break;
            previous = stub;
            stub = database_.findStub(AcDbHandle(links.next));
            if (!stub)
                warn(*previous);
        }
        return std::move(ids_);
    }

private:
    bool linksOf(AcDbStub& stub, Neighbours& links) const {
        if (decoding_)
            database_.objectOf(stub);
        return stub.bytes &&
               (codec_.justDecoded(stub, links) ||
                readNeighbours({stub.bytes, stub.byteCount}, codec_.context(), links)) &&
               ownerOf(links) == owner_;
    }

    AcDbObjectId ownerOf(const Neighbours& links) const {
        switch (links.mode) {
        case EntityMode::ModelSpace:
            return database_.modelSpaceId();
        case EntityMode::PaperSpace:
            return database_.paperSpaceId();
        default:
            return database_.idOf(links.owner);
        }
    }

    bool enter(const AcDbStub& stub, const AcDbStub* previous, uint64_t linkBack) {
        if (previous && linkBack != previous->handle.value() && visited_.empty()) {
            visited_.resize(database_.stubs().size());
            for (const AcDbObjectId id : ids_)
                visited_[id.stub()->index] = true;
        }
        if (visited_.empty())
            return !previous || AcDbObjectId(const_cast<AcDbStub*>(&stub)) != ids_.front();
        if (visited_[stub.index])
            return false;
        visited_[stub.index] = true;
        return true;
    }

    void warn(const AcDbStub& stub) {
        char text[17];
        stub.handle.getIntoAsciiBuffer(text);
        database_.addWarning(std::string("The chain of entities is broken at ") + text + "; what follows isn't shown.");
    }

    const ObjectCodec& codec_;
    AcDbDatabase& database_;
    AcDbObjectId owner_;
    bool decoding_;
    std::vector<AcDbObjectId> ids_;
    std::vector<bool> visited_;
};

} // namespace

DrawingSource::DrawingSource(AcDbDatabase& database, std::shared_ptr<FileImage> image)
    : database_(database), image_(std::move(image)),
      codec_(database, image_ ? image_->version() : Version::R15, TextForm(),
             image_ ? image_->classes() : classesOfNewDrawing()) {
    if (!image_)
        return;
    TextForm form;
    form.codePage = image_->identity().codePage;
    form.countsNul = countsNul(*image_, codec_.context());
    codec_.setForm(form);
}

std::vector<AcDbObjectId> DrawingSource::readChain(AcDbObjectId owner, AcDbObjectId first, AcDbObjectId last,
                                                   bool decoding) {
    return ChainWalk(codec_, database_, owner, decoding).run(first, last);
}

DrawingSource& sourceOf(AcDbDatabase& database) {
    if (!database.source())
        database.setSource(std::make_shared<DrawingSource>(database, nullptr));
    return static_cast<DrawingSource&>(*database.source());
}

} // namespace vndk::dwg
