#include "commands_fixture.h"

namespace {

class LayerTest : public CommandsTest {
protected:
    /// "name colour state", * in front of the current one; "none" without such a layer.
    std::string layer(const char* name) {
        const AcDbObjectPointer<AcDbLayerTable> table(database().layerTableId());
        AcDbLayerTableRecord* record = nullptr;
        if (table->getAt(name, record, AcDb::kForRead) != Acad::eOk)
            return "none";
        std::string text = record->objectId() == database().clayer() ? "*" : "";
        text += record->name() + " " + std::to_string(record->color());
        text += record->isOff() ? " off" : "";
        text += record->isFrozen() ? " frozen" : "";
        text += record->isLocked() ? " locked" : "";
        text += record->isPlottable() ? "" : " unplotted";
        if (record->lineWeight() >= 0)
            text += " " + std::to_string(record->lineWeight());
        record->close();
        return text;
    }
};

} // namespace

TEST_F(LayerTest, optionsDoWhatTheySay) {
    const struct {
        const char* script;
        const char* name;
        const char* expected;
    } cases[] = {
        {"-LAYER M Walls\n\n", "WALLS", "*Walls 7"},
        {"LAYER N A,B,C\n\n", "B", "B 7"},
        {"-LAYER N A S A\n\n", "A", "*A 7"},
        {"-LAYER S NONE\n\n", "NONE", "none"},
        {"-LAYER M A C 3\n\n\n", "A", "*A 3"},
        {"-LAYER N A C red A\n\n", "A", "A 1"},
        {"-LAYER N A C y A\n\n", "A", "A 2"},
        {"-LAYER N A C -5 A\n\n", "A", "A 5 off"},
        {"-LAYER N A C 256 0 300 nocolour 4 A\n\n", "A", "A 4"},
        {"-LAYER N A OFF A\n\n", "A", "A 7 off"},
        {"-LAYER N A OFF A ON *\n\n", "A", "A 7"},
        {"-LAYER OFF 0\n\n\n", "0", "*0 7"},
        {"-LAYER OFF 0 Y\n\n", "0", "*0 7 off"},
        {"-LAYER N A F A\n\n", "A", "A 7 frozen"},
        {"-LAYER N A F A T A\n\n", "A", "A 7"},
        {"-LAYER F 0\n\n", "0", "*0 7"},
        {"-LAYER N A F A S A\n\n", "0", "*0 7"},
        {"-LAYER N A,B1,B2 LO B?\n\n", "B2", "B2 7 locked"},
        {"-LAYER N A,B1 LO B#,~A* U B1\n\n", "B1", "B1 7"},
        {"-LAYER N A LW 0.3 A\n\n", "A", "A 7 30"},
        {"-LAYER N A LW 0.31mm A\n\n", "A", "A 7 30"},
        {"-LAYER N A LW 9\n\n", "A", "A 7"},
        {"-LAYER N A P N A\n\n", "A", "A 7 unplotted"},
        {"-LAYER N a/b,good\n\n", "good", "good 7"},
        {"-LAYER N A,A,a\n\n", "A", "A 7"},
        {"-LAYER L continuous 0\n\n", "0", "*0 7"},
    };
    for (const auto& c : cases) {
        startAgain();
        run(c.script);
        EXPECT_EQ(layer(c.name), c.expected) << c.script << output;
        EXPECT_EQ(events.back(), "end " + std::string(c.script[0] == '-' ? "-LAYER" : "LAYER")) << c.script;
    }
}

TEST_F(LayerTest, oneRunIsOneUndo) {
    run("-LAYER N A,B C 1 A M C\n\nU\n");
    EXPECT_EQ(layer("A") + layer("B") + layer("C") + layer("0"), "nonenonenone*0 7");
    run("REDO\n");
    EXPECT_EQ(layer("A") + " " + layer("C"), "A 1 *C 7");
}

TEST_F(LayerTest, listsByName) {
    run("-LAYER N zeta,Alpha OFF zeta\n\n-LAYER ? *a*\n\n");
    const size_t alpha = output.find("\"Alpha\""), zeta = output.find("\"zeta\"");
    ASSERT_NE(alpha, std::string::npos) << output;
    EXPECT_LT(alpha, zeta);
    EXPECT_EQ(output.find("\"0\"  "), std::string::npos);
}
