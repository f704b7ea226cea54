#include "host/host_fixture.h"

#include "dwg/header_variables.h"

#include <cmath>
#include <map>

using namespace vndk::host;

using SystemVariablesTest = HostTest;

TEST(SystemVariableTable, isSortedAndEachRowLeadsToAValue) {
    const auto rows = SystemVariables::rows();
    for (size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(SystemVariables::find(rows[i].name), &rows[i]) << rows[i].name;
        if (rows[i].place == VariablePlace::Header && !rows[i].get) {
            EXPECT_NE(vndk::dwg::findHeaderRow(rows[i].name), nullptr) << rows[i].name;
        }
    }
    EXPECT_EQ(SystemVariables::find("CLAYERS"), nullptr);
}

TEST_F(SystemVariablesTest, givesAValueOfTheRowsTypeForEachName) {
    for (const VariableRow& row : SystemVariables::rows()) {
        VariableValue value;
        ASSERT_EQ(host.variables().get(row.name, value), VariableError::None) << row.name;
        const size_t expected = row.type == VariableType::Short  ? 0
                                : row.type == VariableType::Real ? 1
                                : row.type == VariableType::Text ? 2
                                                                 : 3;
        EXPECT_EQ(value.index(), expected) << row.name;
    }
}

TEST_F(SystemVariablesTest, whatCanBeReadCanBeSetBackUnlessReadOnly) {
    for (const VariableRow& row : SystemVariables::rows()) {
        VariableValue value;
        ASSERT_EQ(host.variables().get(row.name, value), VariableError::None);
        const VariableError expected =
            row.access == VariableAccess::ReadOnly ? VariableError::ReadOnly : VariableError::None;
        EXPECT_EQ(host.variables().set(row.name, value), expected) << row.name;
    }
}

TEST_F(SystemVariablesTest, refusesWrongValuesAndChangesNothing) {
    const struct {
        const char* name;
        VariableValue value;
        VariableError error;
    } cases[] = {
        {"nosuch", short{1}, VariableError::Unknown},
        {"acadver", std::string("14"), VariableError::ReadOnly},
        {"ucsorg", AcGePoint3d(1, 1, 1), VariableError::ReadOnly},
        {"luprec", short{9}, VariableError::OutOfRange},
        {"luprec", short{-1}, VariableError::OutOfRange},
        {"luprec", 2.0, VariableError::WrongType},
        {"luprec", std::string("2"), VariableError::WrongType},
        {"ltscale", 0.0, VariableError::OutOfRange},
        {"ltscale", std::nan(""), VariableError::OutOfRange},
        {"insbase", short{1}, VariableError::WrongType},
        {"clayer", std::string("nosuch"), VariableError::Refused},
        {"clayer", std::string(), VariableError::Refused},
        {"cecolor", std::string("256"), VariableError::Refused},
        {"cecolor", std::string("pink"), VariableError::Refused},
    };
    for (const auto& c : cases) {
        const std::string before = host.variables().getText("CLAYER") + host.variables().getText("CECOLOR");
        EXPECT_EQ(host.variables().set(c.name, c.value), c.error) << c.name;
        EXPECT_EQ(host.variables().getText("CLAYER") + host.variables().getText("CECOLOR"), before);
        EXPECT_FALSE(SystemVariables::explain(c.name, c.error).empty());
    }
    EXPECT_EQ(host.variables().getShort("LUPREC"), 4);
}

TEST_F(SystemVariablesTest, takesShortsForRealsAndColoursByName) {
    EXPECT_EQ(host.variables().set("LTSCALE", short{2}), VariableError::None);
    EXPECT_EQ(host.variables().getReal("LTSCALE"), 2.0);
    EXPECT_EQ(database().header().LTSCALE, 2.0);
    EXPECT_EQ(host.variables().set("CECOLOR", std::string("Red")), VariableError::None);
    EXPECT_EQ(database().header().CECOLOR, 1);
    EXPECT_EQ(host.variables().getText("CECOLOR"), "1");
}

TEST_F(SystemVariablesTest, tellsReactorsBeforeAndAfter) {
    host.variables().set("CLAYER", std::string("0"));
    host.variables().set("CLAYER", std::string("none"));
    host.variables().set("LUPREC", short{99});
    EXPECT_EQ(events, (std::vector<std::string>{"will change CLAYER", "changed CLAYER", "will change CLAYER",
                                                "not changed CLAYER"}));
}

TEST_F(SystemVariablesTest, profileValuesGoToEachDrawingAndToTheProfile) {
    struct Store : ProfileStore {
        std::map<std::string, std::string> values{{"Variables/ATTREQ", "0"}, {"Variables/OSMODE", "99999"}};
        std::optional<std::string> read(std::string_view section, std::string_view key) override {
            const auto found = values.find(std::string(section) + "/" + std::string(key));
            return found == values.end() ? std::nullopt : std::optional(found->second);
        }
        void write(std::string_view section, std::string_view key, std::string_view value) override {
            values[std::string(section) + "/" + std::string(key)] = value;
        }
    } store;
    host.setProfile(&store);
    EXPECT_EQ(host.variables().getShort("OSMODE"), 4133) << "a value out of range isn't taken";
    host.variables().set("ATTDIA", short{1});
    EXPECT_TRUE(database().attdia());
    EXPECT_EQ(store.values["Variables/ATTDIA"], "1");
    host.documents().appContextNewDocument(nullptr);
    EXPECT_TRUE(database().attdia());
    EXPECT_EQ(database().attreq(), 0);
    // A command's own changes come into the profile at its end only.
    struct Within : AcEditorReactor {
        explicit Within(Store& s) : store(s) {}
        void sysVarChanged(const char*, int) override { seen = store.values["Variables/ATTREQ"]; }
        Store& store;
        std::string seen;
    } within(store);
    host.editor().addReactor(&within);
    host.runText("ATTREQ 1\n");
    host.editor().removeReactor(&within);
    EXPECT_EQ(within.seen, "0");
    EXPECT_EQ(store.values["Variables/ATTREQ"], "1");
    store.values.clear();
    host.runText("ATTREQ 1\n");
    EXPECT_TRUE(store.values.empty()) << "it is the standard value";
    host.setProfile(nullptr);
}

TEST_F(SystemVariablesTest, headerValuesAreUndoneWithTheirCommand) {
    database().undo().beginGroup("test");
    host.variables().set("LTSCALE", 5.0);
    database().undo().endGroup();
    EXPECT_TRUE(database().undo().undo());
    EXPECT_EQ(host.variables().getReal("LTSCALE"), 1.0);
}
