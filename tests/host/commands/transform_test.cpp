// COPY, MOVE, ROTATE, SCALE and MIRROR.
#include "commands_fixture.h"
#include "db/block_reference.h"
#include "db/opaque.h"
#include "db/text.h"

#include <filesystem>

namespace {

class TransformTest : public CommandsTest {
protected:
    AcDbObjectId append(AcDbEntity* entity) {
        AcDbObjectId id;
        const AcDbObjectPointer<AcDbBlockTableRecord> space(database().modelSpaceId(), AcDb::kForWrite);
        space->appendAcDbEntity(id, entity);
        entity->close();
        return id;
    }
    /// A reference to a block of one line, with one attribute.
    AcDbObjectId insertWithAttribute() {
        run("LINE 0,0 1,0\n\n-BLOCK B 0,0 L\n\n");
        AcDbObjectId block, id;
        const AcDbObjectPointer<AcDbBlockTable> table(database().blockTableId());
        static_cast<const AcDbSymbolTable&>(*table).getAt("B", block);
        auto* const reference = new AcDbBlockReference({2, 0, 0}, block);
        const AcDbObjectPointer<AcDbBlockTableRecord> space(database().modelSpaceId(), AcDb::kForWrite);
        space->appendAcDbEntity(id, reference);
        auto* const attribute = new AcDbAttribute({3, 0, 0}, "value", "TAG");
        attribute->setHeight(1);
        reference->appendAttribute(attribute);
        attribute->close();
        reference->close();
        return id;
    }
    /// Where a reference and its only attribute stand, how large the attribute is.
    static std::string placed(AcDbObjectId id) {
        const AcDbObjectPointer<AcDbBlockReference> reference(id);
        const AcDbObjectPointer<AcDbAttribute> attribute(reference->attributes().at(0));
        const auto number = [](double value) { return std::to_string(std::lround(value * 100)) + " "; };
        return number(reference->position().x) + number(reference->position().y) + "| " +
               number(attribute->position().x) + number(attribute->position().y) + number(attribute->height()) +
               attribute->textValue();
    }
};

constexpr const char* kScene = "LINE 0,0 4,0\n\nCIRCLE 10,0 2\nARC C 0,0 1,0 0,1\nPLINE 0,0 A CE 1,0 2,0\n\n";

const DrawingCase kCases[] = {
    {"MOVE L\n\n1,1 3,4\n", "LINE 0,0 4,0\nCIRCLE 10,0 r 2\nARC 0,0 r 1 0..90\nLWPOLYLINE 2,3 b1 4,3"},
    {"MOVE 4,0\n\n5,6\n\n", "LINE 5,6 9,6\nCIRCLE 10,0 r 2\nARC 0,0 r 1 0..90\nLWPOLYLINE 0,0 b1 2,0"},
    {"MOVE ALL R L\n\n0,0,0 @0,0,5\n",
     "LINE 0,0,5 4,0,5\nCIRCLE 10,0,5 r 2\nARC 0,0,5 r 1 0..90\nLWPOLYLINE 0,0 b1 2,0"},
    {"ROTATE ALL\n\n0,0 90\n", "LINE 0,0 0,4\nCIRCLE 0,10 r 2\nARC 0,0 r 1 90..180\nLWPOLYLINE 0,0 b1 0,2"},
    {"ROTATE 4,0\n\n4,0 R 45 135\n", "LINE 4,-4 4,0\nCIRCLE 10,0 r 2\nARC 0,0 r 1 0..90\nLWPOLYLINE 0,0 b1 2,0"},
    {"ROTATE 4,0\n\n4,0 R 0,0 0,1 5,0\n", "LINE 4,4 4,0\nCIRCLE 10,0 r 2\nARC 0,0 r 1 0..90\nLWPOLYLINE 0,0 b1 2,0"},
    {"SCALE ALL\n\n0,0 0.5\n", "LINE 0,0 2,0\nCIRCLE 5,0 r 1\nARC 0,0 r 0.5 0..90\nLWPOLYLINE 0,0 b1 1,0"},
    {"SCALE 4,0\n\n4,0 R 2 3\n", "LINE -2,0 4,0\nCIRCLE 10,0 r 2\nARC 0,0 r 1 0..90\nLWPOLYLINE 0,0 b1 2,0"},
    {"SCALE 4,0\n\n4,0 R\n\n5,0\n", "LINE 0,0 4,0\nCIRCLE 10,0 r 2\nARC 0,0 r 1 0..90\nLWPOLYLINE 0,0 b1 2,0"},
    {"MIRROR ALL\n\n0,0 1,1 Y\n", "LINE 0,0 0,4\nCIRCLE 0,10 r 2\nARC 0,0 r 1 0..90\nLWPOLYLINE 0,0 b-1 0,2"},
    {"MIRROR L 4,0\n\n5,0 5,1\n\n", "LINE 0,0 4,0\nCIRCLE 10,0 r 2\nARC 0,0 r 1 0..90\nLWPOLYLINE 0,0 b1 2,0\n"
                                    "LINE 10,0 6,0\nLWPOLYLINE 10,0 b-1 8,0"},
    {"COPY 4,0 12,0\n\n0,0 0,7\n", "LINE 0,0 4,0\nCIRCLE 10,0 r 2\nARC 0,0 r 1 0..90\nLWPOLYLINE 0,0 b1 2,0\n"
                                   "LINE 0,7 4,7\nCIRCLE 10,7 r 2"},
    {"COPY 4,0\n\n0,1\n\n", "LINE 0,0 4,0\nCIRCLE 10,0 r 2\nARC 0,0 r 1 0..90\nLWPOLYLINE 0,0 b1 2,0\nLINE 0,1 4,1"},
    {"COPY 4,0\n\nM 0,0 0,1 0,2\n\n", "LINE 0,0 4,0\nCIRCLE 10,0 r 2\nARC 0,0 r 1 0..90\nLWPOLYLINE 0,0 b1 2,0\n"
                                      "LINE 0,1 4,1\nLINE 0,2 4,2"},
};

} // namespace

TEST_F(TransformTest, changesWhatIsChosenInOneStepThatCanBeTakenBack) {
    for (const DrawingCase& c : kCases) {
        startAgain();
        run(kScene);
        const std::string before = drawn();
        run(c.script);
        EXPECT_EQ(drawn(), c.drawn) << c.script << output;
        EXPECT_TRUE(events.back().starts_with("end ")) << c.script << events.back();
        const std::string after = drawn();
        run("U\n");
        EXPECT_EQ(drawn(), before) << c.script;
        run("REDO\n");
        EXPECT_EQ(drawn(), after) << c.script;
    }
}

TEST_F(TransformTest, asksInTheWordsOfTheHost) {
    run("LINE 0,0 1,0\n\nROTATE L\n\n0,0 R\n\n10\nSCALE L\n\n0,0 R 1 2\nCOPY L\n\nM 0,0 1,1\n\nMIRROR L\n\n0,0 1,0 "
        "N\n");
    for (const char* prompt :
         {"Current positive angle in UCS:  ANGDIR=counterclockwise  ANGBASE=0",
          "Specify base point: ", "Specify rotation angle or [Reference]: ", "Specify the reference angle <0>: ",
          "Specify the new angle: ", "Specify scale factor or [Reference]: ", "Specify reference length <1>: ",
          "Specify new length: ", "Specify base point or displacement, or [Multiple]: ",
          "Specify second point of displacement or <use first point as displacement>: ",
          "Specify first point of mirror line: ", "Specify second point of mirror line: ",
          "Delete source objects? [Yes/No] <N>: "})
        EXPECT_TRUE(printed(prompt)) << prompt << "\n" << output;
}

TEST_F(TransformTest, tellsWhoWatchesInOrder) {
    class Watcher : public AcDbDatabaseReactor {
    public:
        explicit Watcher(std::vector<std::string>& events) : events_(events) {}
        void objectAppended(const AcDbDatabase*, const AcDbObject* object) override { add("appended", object); }
        void objectModified(const AcDbDatabase*, const AcDbObject* object) override { add("modified", object); }
        void objectErased(const AcDbDatabase*, const AcDbObject* object, bool erased) override {
            add(erased ? "erased" : "back", object);
        }

    private:
        void add(const char* what, const AcDbObject* object) {
            if (object->isKindOf(AcDbEntity::desc()))
                events_.push_back(std::string(what) + " " + object->dxfName());
        }
        std::vector<std::string>& events_;
    } watcher(events);
    run("LINE 0,0 1,0\n\nPLINE 0,0 1,0\n\n");
    database().addReactor(&watcher);
    const struct {
        const char* script;
        std::vector<std::string> events;
    } cases[] = {
        {"MOVE 0,0\n\n0,0 0,1\n", {"start MOVE", "modified LWPOLYLINE", "end MOVE"}},
        {"COPY 0,0\n\n0,0 0,2\n", {"start COPY", "appended LINE", "modified LINE", "end COPY"}},
        {"EXPLODE 1,1\n\n", {"start EXPLODE", "appended LINE", "erased LWPOLYLINE", "end EXPLODE"}},
        {"ERASE L\n\n", {"start ERASE", "erased LINE", "end ERASE"}},
        {"MOVE L\n\n0,0\n\x1B", {"start MOVE", "cancel MOVE"}},
    };
    for (const auto& c : cases) {
        events.clear();
        run(c.script);
        EXPECT_EQ(events, c.events) << c.script;
    }
    database().removeReactor(&watcher);
}

TEST_F(TransformTest, refusesAnswersThatMeanNothing) {
    run("LINE 0,0 1,0\n\n");
    host.commandLine().setInvalidAnswers(vndk::host::InvalidAnswers::FailCommand);
    for (const char* script : {"SCALE L\n\n0,0 0\n", "SCALE L\n\n0,0 -1\n", "ROTATE L\n\n0,0 north\n",
                               "MIRROR L\n\n1,1 1,1\n", "MOVE L\n\nM\n", "CHPROP L\n\nC pink\n", "CHPROP L\n\nS 0\n",
                               "CHPROP L\n\nLA NOWHERE\n", "CHPROP L\n\nLT DOTS\n", "CHPROP L\n\nLW 9\n"}) {
        run(script);
        EXPECT_TRUE(problem) << script;
        EXPECT_TRUE(events.back().starts_with("fail ")) << script << events.back();
        EXPECT_EQ(drawn(), "LINE 0,0 1,0") << script;
    }
}

TEST_F(TransformTest, worksInTheCoordinateSystemInForce) {
    run("LINE 0,0 1,0\n\nUCS Z 90\nMOVE L\n\n0,0 2,0\n");
    EXPECT_EQ(drawn(), "LINE 0,2 1,2");
    // The x axis of this system points up: what turns about its z axis leaves the world's plane.
    run("UCS W UCS Y -90\nROTATE L\n\n0,0 90\n");
    EXPECT_EQ(drawn(), "LINE 0,0,-2 1,0,-2");
    run("MIRROR L\n\n0,0 1,0 Y\n");
    EXPECT_EQ(drawn(), "LINE 0,0,-2 1,0,-2") << "the mirror holds the line";
}

TEST_F(TransformTest, takesTheAttributesOfAReferenceAlong) {
    const AcDbObjectId id = insertWithAttribute();
    run("MOVE L\n\n0,0 0,1\n");
    EXPECT_EQ(placed(id), "200 100 | 300 100 100 value");
    run("SCALE L\n\n0,0 2\n");
    EXPECT_EQ(placed(id), "400 200 | 600 200 200 value");
    run("COPY L\n\n0,0 1,0\n");
    EXPECT_EQ(placed(id), "400 200 | 600 200 200 value");
    EXPECT_EQ(drawn(), "INSERT 4,2\nINSERT 5,2");
    run("U\nU\nU\n");
    EXPECT_EQ(placed(id), "200 0 | 300 0 100 value");
}

TEST_F(TransformTest, mirrorsTextOrKeepsItReadable) {
    constexpr const char* kTexts = "TEXT 1,1 2 0 abc\n\nTEXT J R 9,1 2 0 abc\n\nTEXT J TL 1,9 2 0 abc\n\n";
    run(kTexts);
    run("MIRROR ALL\n\n0,0 0,1 Y\n");
    EXPECT_TRUE(drawn().starts_with("TEXT 'abc' at -1,1 h 2 r 0\n")) << drawn();
    EXPECT_EQ(lisp("(cdr (assoc 71 (entget (entnext))))"), "2") << "it is written backwards";
    startAgain();
    run(std::string(kTexts) + "SETVAR MIRRTEXT 0\nMIRROR ALL\n\n0,0 0,1 Y\n");
    const std::string sideways = drawn();
    EXPECT_NE(sideways.find("h 2 r 0 just 2/0 -1,1\n"), std::string::npos) << sideways;
    EXPECT_NE(sideways.find("'abc' at -9,1 h 2 r 0\n"), std::string::npos) << sideways;
    EXPECT_NE(sideways.find("h 2 r 0 just 2/3 -1,9"), std::string::npos) << sideways;
    run("MIRROR ALL\n\n0,0 1,0 Y\n");
    const std::string downwards = drawn();
    EXPECT_NE(downwards.find("r 0 just 2/3 -1,-1\n"), std::string::npos) << downwards;
    EXPECT_NE(downwards.find("r 0 just 0/3 -9,-1\n"), std::string::npos) << downwards;
    EXPECT_NE(downwards.find("r 0 just 2/1 -1,-9"), std::string::npos) << downwards;
}

TEST_F(TransformTest, leavesWhatIsLockedOrUnknown) {
    run("-LAYER M LOCKED LO LOCKED\n\nLINE 0,0 1,0\n\n-LAYER S 0\n\nCIRCLE 5,5 1\n");
    auto* const opaque = new AcDbOpaqueEntity;
    AcDbOpaqueFields fields;
    fields.typeName = "HATCH";
    opaque->setFields(fields);
    append(opaque);
    run("MOVE ALL\n\n0,0 1,0\n");
    EXPECT_TRUE(printed("1 was on a locked layer.")) << output;
    EXPECT_TRUE(printed("1 HATCH stay as they are: their geometry isn't known.")) << output;
    EXPECT_EQ(drawn(), "LINE 0,0 1,0\nCIRCLE 6,5 r 1\nHATCH");
    run("COPY L\n\n");
    EXPECT_EQ(events.back(), "fail COPY") << "nothing is left to copy";
    EXPECT_EQ(drawn(), "LINE 0,0 1,0\nCIRCLE 6,5 r 1\nHATCH");
}

TEST_F(TransformTest, isTheSameAfterSavingAndReading) {
    run(kScene);
    run("COPY ALL\n\n0,0 0,20\nROTATE P\n\n0,0 30\nMIRROR L\n\n0,0 1,1 N\nCHPROP L\n\nC 3 T 2\n\n");
    const std::string before = drawn();
    const std::string path = (std::filesystem::temp_directory_path() / "vndk_transform_test.dwg").string();
    ASSERT_EQ(database().saveAs(path.c_str()), Acad::eOk) << database().lastFileError();
    startAgain();
    AcDbDatabase read(false);
    ASSERT_EQ(read.readDwgFile(path.c_str()), Acad::eOk) << read.lastFileError();
    EXPECT_EQ(drawnIn(read), before);
    std::filesystem::remove(path);
}
