#include <type_traits>

#include <support/DriverTest.h>

namespace {

constexpr std::size_t kLargest = std::numeric_limits<std::size_t>::max();
const char* const kNoSection = "Variadic parameter has no section for its type";

// A declaration in a file that nobody saves: the class works on the sections alone.
class VariadicParameterTest : public testing::Test {
protected:
    cfg::VariadicParameter* newSection() {
        return dynamic_cast<cfg::VariadicParameter*>(file.getRootSection()->createSubSection("VariadicParameter"));
    }

    template <typename T>
    static T* add(cfg::Section* parent) {
        return dynamic_cast<T*>(parent->createSubSection(T::sectionName()));
    }

    static std::vector<int> minima(const VariadicParameter& parameter) {
        std::vector<const VariadicParameter::Range<int>*> ranges;
        parameter.getIntegerRanges(ranges);
        std::vector<int> result;
        for (const auto* range : ranges) result.push_back(range->getMinimum());
        return result;
    }

    static std::vector<double> realMinima(const VariadicParameter& parameter) {
        std::vector<const VariadicParameter::Range<double>*> ranges;
        parameter.getRealRanges(ranges);
        std::vector<double> result;
        for (const auto* range : ranges) result.push_back(range->getMinimum());
        return result;
    }

    static std::vector<std::string> literals(const VariadicParameter& parameter) {
        std::vector<std::string> result{"from before"};
        parameter.getLiterals(result);
        return result;
    }

    cfg::CfgScenario file;
    cfg::VariadicParameter* section = newSection();
};

// The largest index is what hosts pass for "anywhere": it means the front, not the back.
TEST_F(VariadicParameterTest, RangesGoBeforeTheIndexOrToTheFront) {
    struct Row {
        const char* why;
        std::size_t index;
        std::vector<int> expected;
    };
    const Row rows[] = {
        {"at the front", 0, {9, 1, 2}},
        {"before the second", 1, {1, 9, 2}},
        {"the count is beyond the end", 2, {9, 1, 2}},
        {"the largest index is beyond the end", kLargest, {9, 1, 2}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.why);
        TavrelVariadicParameter integers(newSection());
        integers.setIntegerDefaultValue(0);
        integers.insertIntegerRange(0).setMinimum(2);
        integers.insertIntegerRange(0).setMinimum(1);
        integers.insertIntegerRange(row.index).setMinimum(9);
        EXPECT_EQ(minima(integers), row.expected);

        TavrelVariadicParameter reals(newSection());
        reals.setType(ParameterTypeReal);
        reals.setRealDefaultValue(0.0);
        reals.insertRealRange(0).setMinimum(2);
        reals.insertRealRange(0).setMinimum(1);
        reals.insertRealRange(row.index).setMinimum(9);
        EXPECT_EQ(realMinima(reals), std::vector<double>(row.expected.begin(), row.expected.end()));

        TavrelVariadicParameter texts(newSection());
        texts.setType(ParameterTypeLiteral);
        texts.setLiteralDefaultValue("");
        texts.insertLiteral(0) = "a";
        texts.insertLiteral(0) = "b";
        texts.insertLiteral(row.index) = "new";
        EXPECT_THAT(literals(texts), ElementsAre("a", "b", "new")) << "literals only ever go to the end";
    }
}

TEST_F(VariadicParameterTest, ALaterLoadTakesTheOrderOfTheSections) {
    TavrelVariadicParameter parameter(section);
    parameter.setIntegerDefaultValue(0);
    parameter.insertIntegerRange(0).setMinimum(1);
    parameter.insertIntegerRange(0).setMinimum(2);
    EXPECT_THAT(minima(parameter), ElementsAre(2, 1));
    EXPECT_THAT(minima(TavrelVariadicParameter(nullptr, section)), ElementsAre(1, 2));
}

TEST_F(VariadicParameterTest, TypedSectionsDecideTheTypeBooleanFirst) {
    struct Row {
        const char* why;
        std::vector<const char*> typedSections;
        ParameterType expected;
    };
    const Row rows[] = {
        {"none", {}, ParameterTypeInteger},
        {"boolean before integer, whatever the order in the file",
         {"LiteralParameter", "RealParameter", "IntegerParameter", "BooleanParameter"},
         ParameterTypeBoolean},
        {"integer before real", {"LiteralParameter", "RealParameter", "IntegerParameter"}, ParameterTypeInteger},
        {"real before literal", {"LiteralParameter", "RealParameter"}, ParameterTypeReal},
        {"literal", {"LiteralParameter"}, ParameterTypeLiteral},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.why);
        cfg::VariadicParameter* declaration = newSection();
        for (const char* name : row.typedSections) {
            cfg::Section* typed = declaration->createSubSection(name);
            for (const char* range : {"IntegerRange", "RealRange", "LiteralRange"}) typed->createSubSection(range);
        }
        TavrelVariadicParameter parameter(nullptr, declaration);
        EXPECT_EQ(parameter.getType(), row.expected);
        // Only what belongs to the type was read; the other lists stay empty when the type is changed by hand.
        const bool isTyped = !row.typedSections.empty();
        parameter.setType(ParameterTypeInteger);
        EXPECT_EQ(minima(parameter).size(), isTyped && row.expected == ParameterTypeInteger ? 1U : 0U);
        parameter.setType(ParameterTypeReal);
        EXPECT_EQ(realMinima(parameter).size(), row.expected == ParameterTypeReal ? 1U : 0U);
        parameter.setType(ParameterTypeLiteral);
        EXPECT_EQ(literals(parameter).size(), row.expected == ParameterTypeLiteral ? 1U : 0U);
    }
}

TEST_F(VariadicParameterTest, OperationsOfAnotherTypeThrowPointers) {
    struct Row {
        const char* why;
        ParameterType right;
        const char* message;
        void (*call)(TavrelVariadicParameter&);
    };
    const Row rows[] = {
        {"integer default", ParameterTypeInteger, "Variadic parameter type is not an integer",
         [](TavrelVariadicParameter& p) { p.getIntegerDefaultValue(); }},
        {"integer ranges", ParameterTypeInteger, "Variadic parameter type is not an integer",
         [](TavrelVariadicParameter& p) { minima(p); }},
        {"insert integer", ParameterTypeInteger, "Variadic parameter type is not an integer",
         [](TavrelVariadicParameter& p) { p.insertIntegerRange(0); }},
        {"real default, in fewer words", ParameterTypeReal, "Variadic parameter is not a real",
         [](TavrelVariadicParameter& p) { p.getRealDefaultValue(); }},
        {"real ranges", ParameterTypeReal, "Variadic parameter type is not a real",
         [](TavrelVariadicParameter& p) { realMinima(p); }},
        {"insert real", ParameterTypeReal, "Variadic parameter type is not a real",
         [](TavrelVariadicParameter& p) { p.insertRealRange(0); }},
        {"boolean default", ParameterTypeBoolean, "Variadic parameter type is not a boolean",
         [](TavrelVariadicParameter& p) { p.getBooleanDefaultValue(); }},
        {"literal default", ParameterTypeLiteral, "Variadic parameter type is not a literal",
         [](TavrelVariadicParameter& p) { p.getLiteralDefaultValue(); }},
        {"literals", ParameterTypeLiteral, "Variadic parameter type is not a literal",
         [](TavrelVariadicParameter& p) { literals(p); }},
        {"insert literal", ParameterTypeLiteral, "Variadic parameter type is not a literal",
         [](TavrelVariadicParameter& p) { p.insertLiteral(0); }},
    };
    TavrelVariadicParameter parameter(section);
    parameter.setIntegerDefaultValue(0);
    parameter.setRealDefaultValue(0);
    parameter.setBooleanDefaultValue(false);
    parameter.setLiteralDefaultValue("");
    for (const Row& row : rows)
        for (const ParameterType type :
             {ParameterTypeBoolean, ParameterTypeLiteral, ParameterTypeInteger, ParameterTypeReal}) {
            SCOPED_TRACE(std::string(row.why) + " on type " + std::to_string(type));
            parameter.setType(type);
            const Failure expected = type == row.right ? Failure() : byPointer(32, row.message);
            EXPECT_EQ(failureOf([&] { row.call(parameter); }), expected);
        }
}

TEST_F(VariadicParameterTest, ANewDeclarationHasNoSectionForItsTypeUntilItHasADefault) {
    TavrelVariadicParameter parameter(section);
    EXPECT_EQ(parameter.getType(), ParameterTypeInteger);
    EXPECT_EQ(parameter.getTargetParameter(), nullptr);
    EXPECT_THAT(minima(parameter), IsEmpty());
    EXPECT_EQ(failureOf([&] { parameter.getIntegerDefaultValue(); }), byPointer(-1, kNoSection));
    EXPECT_EQ(failureOf([&] { parameter.insertIntegerRange(0); }), byPointer(-1, kNoSection));
    parameter.setType(ParameterTypeReal);
    EXPECT_EQ(failureOf([&] { parameter.getRealDefaultValue(); }), byPointer(-1, kNoSection));
    EXPECT_EQ(failureOf([&] { parameter.insertRealRange(0); }), byPointer(-1, kNoSection));
    parameter.setType(ParameterTypeBoolean);
    EXPECT_EQ(failureOf([&] { parameter.getBooleanDefaultValue(); }), byPointer(-1, kNoSection));
    parameter.setType(ParameterTypeLiteral);
    EXPECT_EQ(failureOf([&] { parameter.getLiteralDefaultValue(); }), byPointer(-1, kNoSection));
    EXPECT_EQ(failureOf([&] { parameter.insertLiteral(0); }), byPointer(-1, kNoSection));
    EXPECT_EQ(section->getSubSectionCount(), 0U) << "asking makes nothing";
}

TEST_F(VariadicParameterTest, ADefaultMakesTheSectionOfItsOwnType) {
    TavrelVariadicParameter parameter(section);
    parameter.setRealDefaultValue(2.5); // while the type is integer
    parameter.setRealDefaultValue(3.5);
    EXPECT_EQ(parameter.getType(), ParameterTypeInteger);
    EXPECT_EQ(section->getSubSectionCount(), 1U);
    const TavrelVariadicParameter reloaded(nullptr, section);
    EXPECT_EQ(reloaded.getType(), ParameterTypeReal) << "the section decides";
    EXPECT_EQ(reloaded.getRealDefaultValue(), 3.5);
}

TEST_F(VariadicParameterTest, RemovingRangesThrowsByValue) {
    TavrelVariadicParameter parameter(section);
    EXPECT_EQ(failureOf([&] { parameter.removeRange(0); }), byValue(4, "Integer range index is out of range"));
    parameter.setType(ParameterTypeReal);
    EXPECT_EQ(failureOf([&] { parameter.removeRange(kLargest); }), byValue(4, "Real range index is out of range"));
    for (const ParameterType type : {ParameterTypeBoolean, ParameterTypeLiteral}) {
        parameter.setType(type);
        EXPECT_EQ(failureOf([&] { parameter.removeRange(0); }), byValue(32, "Invalid type"));
    }

    parameter.setType(ParameterTypeInteger);
    parameter.setIntegerDefaultValue(0);
    for (const int minimum : {3, 2, 1}) parameter.insertIntegerRange(0).setMinimum(minimum);
    parameter.removeRange(1);
    EXPECT_THAT(minima(parameter), ElementsAre(1, 3));
    EXPECT_THAT(minima(TavrelVariadicParameter(nullptr, section)), ElementsAre(3, 1)) << "the file lost the same one";
    EXPECT_EQ(failureOf([&] { parameter.removeRange(2); }), byValue(4, "Integer range index is out of range"));
}

// The section of a literal goes with its default; integer and real defaults stay.
TEST_F(VariadicParameterTest, ClearingRangesTakesTheDefaultOfLiteralsOnly) {
    TavrelVariadicParameter parameter(section);
    parameter.setIntegerDefaultValue(7);
    parameter.setRealDefaultValue(7.5);
    parameter.setLiteralDefaultValue("stray");
    parameter.insertIntegerRange(0);
    parameter.setType(ParameterTypeReal);
    parameter.insertRealRange(0);
    parameter.setType(ParameterTypeLiteral);
    parameter.insertLiteral(0) = "a";

    parameter.clearRanges();
    EXPECT_TRUE(parameter.isLiteral());
    EXPECT_THAT(literals(parameter), IsEmpty());
    EXPECT_EQ(failureOf([&] { parameter.getLiteralDefaultValue(); }), byPointer(-1, kNoSection));
    EXPECT_EQ(failureOf([&] { parameter.insertLiteral(0); }), byPointer(-1, kNoSection));
    parameter.setType(ParameterTypeInteger);
    EXPECT_THAT(minima(parameter), IsEmpty());
    EXPECT_EQ(parameter.getIntegerDefaultValue(), 7);
    parameter.setType(ParameterTypeReal);
    EXPECT_THAT(realMinima(parameter), IsEmpty());
    EXPECT_EQ(parameter.getRealDefaultValue(), 7.5);
    EXPECT_THAT(minima(TavrelVariadicParameter(nullptr, section)), IsEmpty()) << "the ranges left the file";

    parameter.setType(ParameterTypeLiteral);
    parameter.setLiteralDefaultValue("again");
    parameter.insertLiteral(0) = "b";
    EXPECT_THAT(literals(parameter), ElementsAre("b"));
}

// Two objects on one declaration: what one removes the other still lists, on sections that stay allocated.
TEST_F(VariadicParameterTest, CopiesShareTheSections) {
    TavrelVariadicParameter first(section);
    first.setIntegerDefaultValue(0);
    first.insertIntegerRange(0).setMinimum(2);
    first.insertIntegerRange(0).setMinimum(1);
    first.setLiteralDefaultValue("");
    TavrelVariadicParameter second(first);
    first.setType(ParameterTypeLiteral);
    first.insertLiteral(0) = "text";
    TavrelVariadicParameter third(newSection());
    third = first;

    first.setName("shared");
    EXPECT_EQ(second.getName(), "shared");
    EXPECT_EQ(third.getSection(), section);

    first.clearRanges();
    EXPECT_THAT(literals(third), ElementsAre("text"));
    EXPECT_THAT(minima(second), ElementsAre(1, 2));
    second.removeRange(0); // of a section that left the tree before
    EXPECT_THAT(minima(second), ElementsAre(2));
    std::vector<const VariadicParameter::Range<int>*> ranges;
    second.getIntegerRanges(ranges);
    dynamic_cast<TavrelRange<int>&>(const_cast<VariadicParameter::Range<int>&>(*ranges.at(0))).setMaximum(5);
    EXPECT_EQ(ranges.at(0)->getMaximum(), 5);
}

TEST_F(VariadicParameterTest, RangesOutliveWhatListedThem) {
    auto parameter = std::make_unique<TavrelVariadicParameter>(section);
    parameter->setIntegerDefaultValue(0);
    const TavrelRange<int> range = parameter->insertIntegerRange(0);
    std::string& name = section->name;
    parameter->setName("declared");
    parameter.reset();
    EXPECT_EQ(range.getSection()->getParentSection()->getParentSection(), section);
    EXPECT_EQ(name, "declared") << "destroying the view leaves the file alone";
}

TEST_F(VariadicParameterTest, ARangeIsAViewOfItsSection) {
    auto* integer = add<cfg::IntegerRange>(add<cfg::IntegerParameter>(section));
    TavrelRange<int> range(integer);
    range.setMinimum(10);
    range.setMaximum(-10);
    EXPECT_EQ(integer->minimum, 10) << "nothing ties the ends together";
    EXPECT_EQ(integer->maximum, -10);
    TavrelRange<int> copy(range);
    integer->maximum = 3;
    EXPECT_EQ(copy.getMaximum(), 3);
    VariadicParameter::Range<int>& base = copy;
    base = range;
    EXPECT_EQ(&(base = range), &base);

    auto* real = add<cfg::RealRange>(add<cfg::RealParameter>(section));
    TavrelRange<double> realRange(real);
    realRange.setMaximum(0.25);
    EXPECT_EQ(real->maximum, 0.25);

    EXPECT_EQ(failureOf([] { TavrelRange<int> none(nullptr); }), byValue(-1, "section null"));
    EXPECT_EQ(failureOf([] { TavrelRange<double> none(nullptr); }), byValue(-1, "section null"));
    EXPECT_THROW(TavrelRange<int>(real).getMinimum(), std::bad_cast);
}

TEST_F(VariadicParameterTest, UnitsZeroAndOneAreNone) {
    TavrelVariadicParameter parameter(section);
    for (const auto& [unit, expected] : {std::pair("", false), {"km/h", true}, {"furlong per fortnight", false}}) {
        parameter.setParameterUnit(unit);
        EXPECT_EQ(parameter.hasParameterUnit(), expected) << unit;
        EXPECT_EQ(parameter.getParameterUnit(), unit);
    }
}

static_assert(!std::has_virtual_destructor_v<VariadicParameter::Range<int>>, "stands behind the operations, if at all");
static_assert(std::has_virtual_destructor_v<TavrelRange<int>>);
static_assert(std::is_copy_assignable_v<VariadicParameter::Range<double>>);

} // namespace
