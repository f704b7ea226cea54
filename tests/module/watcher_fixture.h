#pragma once
// Commands under the names that the module watches, which put plain references into the drawing as the host's own do.

#include "ads/ads.h"
#include "module/module_fixture.h"

/// A command that asks for a point and puts a plain reference to the block DESK there, turned and scaled as told.
class WatcherTest : public ModuleTest {
protected:
    void SetUp() override {
        ModuleTest::SetUp();
        current = this;
        for (const char* name : {"INSERT", "DDINSERT", "-INSERT", "MINSERT", "PLACE"})
            host.commands().addCommand("WATCHED", name, name, ACRX_CMD_MODAL, [] { current->place(); });
        block = addBlock("DESK", {10, 20, 30});
        database().undo().clear();
    }
    void TearDown() override {
        host.commands().removeGroup("WATCHED");
        ModuleTest::TearDown();
        current = nullptr;
    }

    void define(const char* tag, const char* text, AcGePoint3d position = {}, bool constant = false) {
        auto* const definition = new AcDbAttributeDefinition(position, text, tag, "Prompt");
        definition->setConstant(constant);
        append(block, definition);
    }

    AcDbObjectId space() { return database().tilemode() ? database().modelSpaceId() : database().paperSpaceId(); }
    AcDbObjectId addPlain(AcGePoint3d position) {
        auto* const reference = new AcDbBlockReference(position, block);
        reference->setRotation(rotation);
        reference->setScaleFactors(scale);
        return append(space(), reference);
    }
    short attreq() { return database().attreq(); }

    /// Class and position of each entity of the space; texts of attributes.
    std::string drawn() {
        std::string text;
        for (const AcDbObjectId id : entities(space())) {
            const AcDbObjectPointer<AcDbEntity> entity(id);
            text += text.empty() ? "" : " ";
            if (const auto* const attribute = VNDKAttribute::cast(entity.object()))
                text += "'" + attribute->textValue() + "'";
            else if (const auto* const reference = AcDbBlockReference::cast(entity.object()))
                text += (reference->isA() == AcDbBlockReference::desc() ? "plain" : "intelligent") +
                        std::to_string(static_cast<int>(reference->position().x));
            else
                text += entity->dxfName();
        }
        return text;
    }

    AcDbObjectId block;
    double rotation = 0;
    AcGeScale3d scale;
    short attreqWithin = -2; // while the last command ran

private:
    void place() {
        attreqWithin = attreq();
        ads_point point;
        if (acedGetPoint(nullptr, "\nSpecify insertion point: ", point) == RTNORM)
            addPlain({point[0], point[1], point[2]});
    }

    static inline WatcherTest* current = nullptr;
};
