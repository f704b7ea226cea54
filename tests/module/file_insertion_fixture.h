#pragma once
// Drawings on the disk to insert by (c:_bInsertFile ...), and the drawing that they go into.

#include "module/module_fixture.h"
#include "platform/temp_folder.h"
#include "win32/drive_map.h"

#include <memory>

class FileInsertionTest : public ModuleTest {
protected:
    static AcDbAttributeDefinition* define(const char* tag, const char* text, const char* prompt = "Prompt",
                                           AcGePoint3d position = {}) {
        auto* const definition = new AcDbAttributeDefinition(position, text, tag, prompt);
        definition->setHeight(2.5);
        return definition;
    }

    /// A definition "WIDE", asked for as "How wide", that stretches where its value is above 800.
    static VNDKAttributeDefinition* defineWide(const char* text) {
        auto* const definition = new VNDKAttributeDefinition;
        definition->setTag("WIDE");
        definition->setPrompt("How wide");
        definition->setTextString(text);
        definition->setPosition({5, 5, 0});
        definition->setConditionalPoint1({10, 0, 0});
        definition->setConditionalPoint2({20, 0, 0});
        auto* const formula = new CCondFormula;
        EXPECT_EQ(formula->setText("stretch = value > 800"), Acad::eOk);
        definition->AddFormula(formula);
        return definition;
    }

    /// Writes a drawing with these entities in model space.
    std::string file(const std::string& name, const std::vector<AcDbEntity*>& contents, AcGePoint3d base = {}) {
        AcDbDatabase drawing(true, true);
        drawing.setInsbase(base);
        for (AcDbEntity* const entity : contents)
            append(drawing.modelSpaceId(), entity);
        std::string path = folder / name;
        EXPECT_EQ(drawing.saveAs(path.c_str()), Acad::eOk) << drawing.lastFileError();
        return path;
    }
    /// One with three attribute definitions.
    std::string desk() {
        return file("desk.dwg", {define("OWNER", "nobody", "Who works here"), define("ROOM", "study", "Room"),
                                 define("ASSET", "0000", "Asset number")});
    }

    /// The call that inserts a file, without a line end.
    static std::string call(const std::string& path, const char* point = "(list 1.0 2.0 3.0)") {
        std::string text;
        for (const char c : path)
            text += c == '\\' ? "\\\\" : std::string(1, c);
        return "(c:_bInsertFile \"" + text + "\" " + point + ")";
    }
    /// Inserts a file and types these lines. An empty line more would repeat the last command.
    std::string insert(const std::string& path, const std::string& lines = {}) {
        output.clear();
        problem = host.runText(call(path) + "\n" + lines);
        return output;
    }

    /// The references of a database's model space.
    static std::vector<AcDbObjectId> references(AcDbDatabase& drawing) {
        std::vector<AcDbObjectId> ids;
        for (const AcDbObjectId id : entities(drawing.modelSpaceId()))
            if (AcDbObjectPointer<AcDbEntity>(id)->isA() == VNDKBlockReference::desc())
                ids.push_back(id);
        return ids;
    }
    std::vector<AcDbObjectId> references() { return references(database()); }

    /// "TAG=text|default" of each attribute of a reference.
    static std::vector<std::string> values(AcDbObjectId referenceId) {
        std::vector<std::string> found;
        const AcDbObjectPointer<VNDKBlockReference> reference(referenceId);
        for (int i = 0; reference && i < reference->attributeCount(); ++i) {
            const AcDbObjectPointer<VNDKAttribute> attribute(reference->getAttribute(i));
            found.push_back(attribute->tagValue() + "=" + attribute->textValue() + "|" + attribute->defaultText());
        }
        return found;
    }
    std::vector<std::string> lastValues() {
        return references().empty() ? std::vector<std::string>() : values(references().back());
    }

    AcDbObjectId blockNamed(const char* name) {
        AcDbObjectId id;
        const AcDbObjectPointer<AcDbBlockTable> table(database().blockTableId());
        return table->getAt(name, id) == Acad::eOk ? id : AcDbObjectId();
    }

    size_t liveObjects() {
        size_t count = 0;
        for (const AcDbStub& stub : database().stubs())
            count += !stub.has(kStubErased);
        return count;
    }

    TempFolder folder;
};
