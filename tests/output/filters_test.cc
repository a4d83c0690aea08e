// Which atoms are shown, with which frame space, and how URIs are.

#include "output/framespace_display.h"
#include "reading_fixture.h"

namespace zarel {
namespace {

const auto filter_p = [] { display_settings().set_filters({"p"}, {}); };
const auto filter_positive_p = [] { display_settings().set_filters({}, {"p"}); };
const auto filter_both = [] { display_settings().set_filters({"p"}, {"q"}); };
const auto show_spaces = [] { display_settings().space = false; };

constexpr std::string_view kSigned =
    "{a_3(p,default,x), -a_3(p,s,x), a_2(q,default), -a_2(q,default), a_3(r,default,x)}";

constexpr Case kFilters[] = {
    {"none", kSigned, "{p(x), -p(x)@s, q, -q, r(x)}\n"},    // nor is the default space
    {"all_of_p_and_positive_q", kSigned, "{p(x), -p(x)@s, q}\n", filter_both},
    {"the_first_atom_shown_has_no_comma", "{a_2(r,default), a_2(p,default)}", "{p}\n", filter_p},
    {"nothing_is_left", "{a_2(r,default), -a_3(p,default,x)}", "{}\n", filter_positive_p},
    {"names_are_compared_exactly", "{a_2(pp,default), a_2(\"p\",default)}", "{}\n", filter_p},
    {"frames_are_not_filtered", "{a_3(instanceOf,sFlogic,o,c), a_2(q,s), a_3(valueOf,sFlogic,o,a)}",
     "{o:c@s, o[a]@s}\n", filter_p},
    {"term_lists_are_not_filtered", "q, r", "q,r\n", filter_p},
    {"a_space_of_frames_without_arguments", "{a_2(p,sFlogic), a_2(q,sFlogic)}", "{p@sFlogic}\n",
     filter_p},
    {"never_on_frames", "{a_3(subClassOf,defaultFlogic,b,c), a_3(valueOf,defaultFlogic,o,a)}",
     "{b::c, o[a]}\n", show_spaces},
};
INSTANTIATE_TEST_SUITE_P(Filters, Reader, testing::ValuesIn(kFilters), case_name);

const auto declare_prefixes = [] {
  vectorName().declare("ex", "\"http://e.x/o#\"");
  vectorName().declare("again", "\"http://e.x/o#\"");
  vectorName().declare("two", "\"u#\"");
};
const auto use_prefixes = [] { declare_prefixes(), note_prefix_use(); };

constexpr std::string_view kUris = R"({a_4(p,default,"http://e.x/o#person","u#a")})";
constexpr std::string_view kFullUris = "{p(\"http://e.x/o#person\",\"u#a\")}\n";

constexpr Case kNamespaces[] = {
    {"shortened", kUris, "{p(ex:person,two:a)}\n", use_prefixes},
    {"not_when_no_prefix_was_used", kUris, kFullUris, declare_prefixes},
    {"not_when_none_is_declared", kUris, kFullUris, note_prefix_use},
    {"not_in_bare_predicates", R"({a_2("u#a","u#b")})", "{\"u#a\"@\"u#b\"}\n", use_prefixes},
    {"not_in_frames", R"({a_3(instanceOf,s,"u#a",c), a_3(instanceOf,sFlogic,"u#a",c)})",
     "{instanceOf(two:a,c)@s, \"u#a\":c@s}\n", use_prefixes},
};
INSTANTIATE_TEST_SUITE_P(Namespaces, Reader, testing::ValuesIn(kNamespaces), case_name);

TEST(ReturnAddress, JudgesEveryPieceByItself) {
  NamespaceTable table;
  table.declare("two", "\"u#\"");
  const auto shortened = [&](std::string_view args) { return returnAddress(table, args); };
  EXPECT_EQ(shortened(R"(a,"u#b","v#c","u",u#d)"), R"(a,two:b,"v#c","u",u#d)");
  EXPECT_EQ(shortened(R"("u#a#b","u#")"), "two:a#b,two:");
  EXPECT_EQ(shortened(R"("u#a,b#c","u#d,"u#e")"), R"("u#a,b#c","u#d,two:e)");
  for (const std::string_view same : {R"(f("u#a","u#b"))", "", R"(,",)"})
    EXPECT_EQ(shortened(same), same);
}

}    // namespace
}    // namespace zarel
