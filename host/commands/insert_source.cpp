#include "commands/insert_source.h"

#include "ap/xrefs.h"
#include "commands/block_tools.h"
#include "commands/drawing_files.h"
#include "commands/file_questions.h"
#include "db/redefine_block.h"
#include "ed/host.h"
#include "win32/codepage.h"

#include <optional>

namespace vndk::host {

namespace {

/// A typed name in its parts.
struct TypedName {
    bool exploded = false;
    bool redefines = false;
    std::string block, file;
};

TypedName parts(std::string text) {
    TypedName name;
    if (text.starts_with('*')) {
        name.exploded = true;
        text.erase(0, 1);
    }
    const size_t equals = text.find('=');
    const std::string left = text.substr(0, equals);
    if (equals == std::string::npos || !acdbIsValidSymbolName(left.c_str())) {
        name.block = name.file = text;
        return name;
    }
    name.redefines = true;
    name.block = left;
    name.file = equals + 1 < text.size() ? text.substr(equals + 1) : left;
    return name;
}

/// "C:\dwg\Desk.dwg" is the file of a block "Desk".
std::string blockNameOf(const DrawingFile& file) {
    const std::string name = file.dosName.substr(file.dosName.find_last_of('\\') + 1);
    return acdbFoldName(name).ends_with(".DWG") ? name.substr(0, name.size() - 4) : name;
}

/// Asks for a source once; a name that leads to nothing ends with a complaint.
class SourcePrompt {
public:
    SourcePrompt(CommandContext& ctx, bool mayExplode, InsertSource& source)
        : ctx_(ctx), mayExplode_(mayExplode), source_(source) {}

    PromptStatus ask() {
        for (;;) {
            std::string typed;
            PromptStatus status = askName(typed);
            if (status != PromptStatus::Normal)
                return status;
            if (typed == "?") {
                status = listBlocks(ctx_);
                if (status != PromptStatus::Normal)
                    return status;
                continue;
            }
            complaint_.clear();
            status = take(parts(typed));
            if (complaint_.empty())
                return status;
            if (!ctx_.host().commandLine().complain(complaint_, typed))
                return PromptStatus::Error;
        }
    }

private:
    PromptStatus askName(std::string& typed) const {
        const std::string last = ctx_.host().variables().getText("INSNAME");
        const std::string standard = last.empty() ? "" : " <" + last + ">";
        const PromptStatus status =
            ctx_.prompts().getString("\nEnter block name or [?]" + standard + ": ", TextForm::Name, typed);
        if (typed.empty())
            typed = last;
        if (status != PromptStatus::Normal || typed != kAskInDialog)
            return status;
        const auto chosen = askFileName(ctx_.host(), {.title = "Select Drawing File"});
        typed = chosen.value_or("");
        return chosen ? PromptStatus::Normal : PromptStatus::Cancelled;
    }

    PromptStatus refuse(std::string complaint) {
        complaint_ = std::move(complaint);
        return PromptStatus::Error;
    }

    PromptStatus take(const TypedName& name) {
        if (name.block.empty())
            return refuse("Give the name of a block or of a drawing, or ? to list the blocks.");
        if (name.exploded && (!mayExplode_ || name.redefines))
            return refuse(mayExplode_ ? "A block that is redefined can't be inserted in pieces."
                                      : "The pieces of a block can't be arrayed: give its name without an asterisk.");
        source_.exploded = name.exploded;
        source_.name = name.block;
        source_.block = findRecord<AcDbBlockTable>(ctx_.database().blockTableId(), name.block);
        return source_.block.isNull() || name.redefines ? takeFile(name) : takeBlock();
    }

    PromptStatus takeBlock() {
        const AcDbObjectPointer<AcDbBlockTableRecord> record(source_.block);
        if (!record || record->isLayout() || record->isDependent())
            return refuse("\"" + source_.name +
                          "\" can't be inserted: it is a space or belongs to an external reference.");
        source_.name = record->name();
        return PromptStatus::Normal;
    }

    PromptStatus takeFile(const TypedName& name) {
        const auto file = findDrawing(ctx_, name.file);
        if (!file) {
            ctx_.print("\n\"" + name.file + "\": Can't find file in search path:" + searchPathText(ctx_) +
                       "\n*Invalid*");
            return refuse(
                "There is no block and no drawing of that name: ? lists the blocks, a drawing elsewhere needs "
                "its folder, and a name with blanks stands between double quotes.");
        }
        if (!name.redefines) {
            source_.name = blockNameOf(*file);
            source_.block = findRecord<AcDbBlockTable>(ctx_.database().blockTableId(), source_.name);
        }
        if (!acdbIsValidSymbolName(source_.name.c_str()) || source_.name.starts_with('*'))
            return refuse("\"" + source_.name + "\" can't name a block: give another name as in NAME=FILE.");
        if (acdbFoldName(file->dosName) == acdbFoldName(ctx_.document().fileName()))
            return refuse("Block \"" + source_.name + "\" references itself: it is the drawing that is being edited.");
        // The pieces of a file go into the drawing whatever its blocks are.
        if (source_.exploded)
            source_.block.setNull();
        if (source_.block.isNull())
            return read(*file);
        bool redefine = name.redefines;
        if (const PromptStatus status = askRedefinition(redefine); status != PromptStatus::Normal)
            return status;
        return redefine ? read(*file) : takeBlock();
    }

    /// Whether the block of that name is to be redefined; asks unless `redefine` says so or EXPERT does.
    PromptStatus askRedefinition(bool& redefine) {
        {
            const AcDbObjectPointer<AcDbBlockTableRecord> record(source_.block);
            if (!record || record->isFromExternalReference() || record->isLayout())
                return refuse("Block \"" + source_.name + "\" is an external reference and can't be redefined.");
            source_.name = record->name();
        }
        redefine = redefine || ctx_.host().variables().getShort("EXPERT") >= 2;
        PromptStatus status = PromptStatus::Normal;
        if (!redefine)
            redefine = askRedefine(ctx_, source_.name, status);
        return status;
    }

    PromptStatus read(const DrawingFile& file) {
        constexpr int kDenyNone = 0x40; // as it was last saved, whoever edits it
        source_.file = std::make_unique<AcDbDatabase>(false);
        if (source_.file->readDwgFile(file.hostPath.c_str(), kDenyNone) == Acad::eOk)
            return PromptStatus::Normal;
        ctx_.fail(win32::fromUtf8Lossy(source_.file->lastFileError()), FailureKind::Drawing);
        return PromptStatus::Error;
    }

    CommandContext& ctx_;
    bool mayExplode_;
    InsertSource& source_;
    std::string complaint_;
};

} // namespace

PromptStatus askInsertSource(CommandContext& ctx, bool mayExplode, InsertSource& source) {
    return SourcePrompt(ctx, mayExplode, source).ask();
}

AcGePoint3d InsertSource::origin() const {
    if (file)
        return file->insbase();
    const AcDbObjectPointer<AcDbBlockTableRecord> record(block);
    return record ? record->origin() : AcGePoint3d();
}

bool defineBlock(CommandContext& ctx, InsertSource& source) {
    if (!source.file)
        return true;
    const bool redefines = !source.block.isNull();
    const Acad::ErrorStatus status =
        redefines ? acdbRedefineBlock(source.block, *source.file)
                  : ctx.database().insert(source.block, source.name.c_str(), source.file.get(), false);
    if (status == Acad::eOk) {
        if (redefines)
            ctx.print("\nBlock \"" + source.name + "\" redefined.");
        // What came along from the file may refer to other drawings.
        loadXrefs(ctx.host(), ctx.database(), ctx.document().hasFile() ? ctx.document().fileName() : "");
        return true;
    }
    if (status == Acad::eDwgNeedsRecovery) {
        ctx.fail(win32::fromUtf8Lossy(ctx.database().lastFileError()), FailureKind::Drawing);
        return false;
    }
    const std::string block = "Block \"" + source.name + "\" ";
    ctx.fail(status == Acad::eSelfReference
                 ? block + "references itself: insert the drawing under another name, as in NAME=FILE."
                 : block + "can't be made of this drawing: " + acadErrorStatusText(status) + '.');
    return false;
}

} // namespace vndk::host
