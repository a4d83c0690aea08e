// folding_test.cc - generic atoms in both forms: what clingo is given, and that answers do not
// tell.
#include <cctype>
#include <random>
#include <vector>

#include "run_dl.h"

namespace dl_test {
namespace {

class Forms : public testing::TestWithParam<Case> {};
TEST_P(Forms, DependOnAllUsesOfThePredicate) {
  const std::string all = translation(GetParam().program);
  EXPECT_EQ(all.substr(0, all.find("\n#") + 1), GetParam().out);
}
constexpr Case kForms[] = {
    {"constants", "a_2(p,d,X) :- -a_1(q,d), a_3( r, d, X, \"a,'b\"), not a_12(s,e,f(X)).",
     "a_2'p'default(X):--a_1'q'default,a_3'r'default(X,\"a,'b\"),not a_12's'e(f(X)).\n"},
    {"reserved_words", "a_1(not,v).", "a_1'_nnot'v.\n"},
    {"integers", "a_1(p,0). a_2(12,007,3).", "a_1'p'0.\na_2'12'7(3).\n"},
    {"strings", "a_1(p,\"a\"). -a_2(\"x,'_(\\\nÄ\",d,\"x\").",
     "a_1'p'_sa.\n-a_2'_sx_2c_27_5f_28_5c_0a_c3_84'default(\"x\").\n"},
    {"compound", "a_1(p,d). a_1(p,d(1)).", "a_1(p,d).\na_1(p,d(1)).\n"},
    {"too_few_arguments", "a_1(p,d). a_1(p).", "a_1(p,d).\na_1(p).\n"},
    {"no_arguments", "a_1(p,d). a_1.", "a_1(p,d).\na_1.\n"},
    {"layout", "a_1 ( p % a_1(X,Y)\n , d).b:-c,\"a_1\"==\"a_1(X\",a_1(p\t,d).",
     "a_1'p'default.\nb:-c,\"a_1\"=\"a_1(X\",a_1'p'default.\n"},
    {"terms", "p(a_2(x,y,1)). a_2(p,d,a_2(x,y,1)).",
     "p(a_2(x,y,1)).\na_2'p'default(a_2(x,y,1)).\n"},
    {"frames",
     "a_5(valueOf,d,f(X,\"(,\"),age,\"b c\",\"->\") :- -a_5(valueOf,e,X,\"h,\",1,\"->>\").",
     "a_5'valueOf'default'age'_s_2d_3e(f(X,\"(,\"),\"b "
     "c\"):--a_5'valueOf'e'_sh_2c'_s_2d_3e_3e(X,1).\n"},
    {"frames_with_other_attributes", "a_5(valueOf,d,o,a(1),1,\"->\"). a_5(valueOf,d,o,b,1,\"->\").",
     "a_5'valueOf'default(o,a(1),1,\"->\").\na_5'valueOf'default(o,b,1,\"->\").\n"},
    {"what_may_be_a_frame", "b(R) :- a_5(R,d,o,b,1,\"->\"). a_5(valueOf,d,o,b,1,\"->\").",
     "b(valueOf):-a_5'valueOf'default(o,b,1,\"->\").\na_5'valueOf'default(o,b,1,\"->\").\n"},
    {"no_frames", "a_5(other,d,o,b,1,\"->\"). a_5(valueOf,d,o,b,1). a_3(valueOf,d,o,b).",
     "a_5'other'default(o,b,1,\"->\").\na_5'valueOf'default(o,b,1).\na_3'valueOf'default(o,b).\n"},
    {"usual_space",
     "a_2(p,default,X) :- -a_1(Q,default,R), a_1(not,default), a_2( \"a b\",default,X). "
     "a_1(7,default). a_3(a_2,default,default,3). a_1(default,p).",
     "a_2'p'd(X):--a_1(Q,default,R),a_1'_nnot'd,a_2'_sa_20b'd(X).\na_1'7'd.\na_3'a_2'd(default,3)."
     "\n"
     "a_1'default'p.\n"},
    {"frames_in_the_usual_space",
     "-a_5(valueOf,defaultFlogic,o,age,f(1),\"->\"). a_5(valueOf,defaultFlogic,o,\"x "
     "y\",1,\"->>\"). "
     "a_5(valueOf,defaultFlogic,o,7,1,\"->\"). a_5(valueOf,defaultFlogic,o,age,1,f). "
     "a_4(valueOf,default,o,age,1).",
     "-a_5'valueOf'dF'age'_s_2d_3e(o,f(1)).\na_5'valueOf'dF'_sx_20y'_s_2d_3e_3e(o,1).\na_5'valueOf'"
     "dF'7'_s_2d_3e(o,1).\n"
     "a_5'valueOf'dF'age'f(o,1).\na_4'valueOf'd(o,age,1).\n"},
    {"other_predicates", "a_x(p,d). a_(p,d). a_1x(p,d). ba_1(X,Y) :- a_1(p,d), a_x(X,Y).",
     "a_x(p,d).\na_(p,d).\na_1x(p,d).\nba_1(X,Y):-a_1'p'default,a_x(X,Y).\n"},
};
INSTANTIATE_TEST_SUITE_P(Cases, Forms, testing::ValuesIn(kForms), case_name);

class BothForms : public testing::TestWithParam<Case> {};
TEST_P(BothForms, GiveTheSameAnswers) {
  const std::string program(GetParam().program);
  const std::string options(GetParam().options);
  EXPECT_NE(translation(program), translation(program, "-nofold"));
  EXPECT_EQ(sorted(run(program, options).output), sorted(GetParam().out));
  EXPECT_EQ(sorted(run(program, options + " -nofold").output), sorted(GetParam().out));
}
constexpr Case kBothForms[] = {
    {"constants_meet_at_different_places", "a_1(x_y,z) v a_1(x,y_z). -a_1(x,yz). a_2(x,y,z).",
     "{-a_1(x,yz), a_1(x_y,z), a_2(x,y,z)}\n{-a_1(x,yz), a_1(x,y_z), a_2(x,y,z)}\n"},
    {"arities", "a_1(p,d). a_1(p,d,1) :- a_1(p,d). -a_1(p,d,1,2).",
     "{a_1(p,d), a_1(p,d,1), -a_1(p,d,1,2)}\n"},
    {"spellings", "a_2(not,v,\"a(',b \\\"). a_2(p,d,not) :- a_2(not,v,X), not a_2(p,e,X).",
     "{a_2(not,v,\"a(',b \\\"), a_2(p,d,not)}\n"},
    {"strings", "a_2(\"p',(_\\\",\"Ä b\",1). a_2(1,\"\",X) :- a_2(\"p',(_\\\",\"Ä b\",X).",
     "{a_2(1,\"\",1), a_2(\"p',(_\\\",\"Ä b\",1)}\n"},
    {"line_end_in_a_string", "a_1(d,\"a\\n\nb\").", "{a_1(d,\"a\\n\nb\")}\n"},
    {"frames", "a_5(valueOf,d,f(\"(,'\",g(1)),\"a b\",\"->\",x). -a_5(valueOf,d,o,1,2,3).",
     "{a_5(valueOf,d,f(\"(,'\",g(1)),\"a b\",\"->\",x), -a_5(valueOf,d,o,1,2,3)}\n"},
    {"strong_negation", "a_1(p,d). -a_1(p,d) :- a_1(p,d).", ""},
    {"both_negations", "a_2(n,d,1). -a_3(p,d,2,1). a_2(q,d,X) :- a_2(n,d,X), not -a_3(p,d,X,_).",
     "{a_2(n,d,1), a_2(q,d,1), -a_3(p,d,2,1)}\n"},
    {"disjunction", "a_2(p,d,1) v -a_2(p,d,2). a_2(q,d,X) :- a_2(p,d,X).",
     "{a_2(p,d,1), a_2(q,d,1)}\n{-a_2(p,d,2)}\n"},
    {"aggregate",
     "a_2(p,d,1). a_2(p,d,2). -a_2(p,d,3). a_2(n,d,N) :- N = #count{X:a_2(p,d,X)}, "
     "3 <= #sum{X:-a_2(p,d,X)}.",
     "{a_2(p,d,1), a_2(p,d,2), -a_2(p,d,3), a_2(n,d,2)}\n"},
    {"usual_space",
     "a_1(p,default). -a_1(not,default). a_1(7,default). -a_2(\"p',(_\\\",default,\"'(\"). "
     "a_5(valueOf,defaultFlogic,o,f,1,\"->\"). "
     "a_5(valueOf,defaultFlogic,f(a,\"(\"),\"'(\",1,\"'=>\"). "
     "-a_5(valueOf,defaultFlogic,o,f,1,5). a_5(f,default,o,f,1,\"->\"). "
     "a_5(valueOf,defaultFlogic,o,3,1,p).",
     "{a_1(p,default), -a_1(not,default), a_1(7,default), -a_2(\"p',(_\\\",default,\"'(\"), "
     "a_5(valueOf,defaultFlogic,o,f,1,\"->\"), "
     "a_5(valueOf,defaultFlogic,f(a,\"(\"),\"'(\",1,\"'=>\"), "
     "-a_5(valueOf,defaultFlogic,o,f,1,5), a_5(f,default,o,f,1,\"->\"), "
     "a_5(valueOf,defaultFlogic,o,3,1,p)}\n"},
    {"filter_in_the_usual_space",
     "a_1(p,default). -a_5(valueOf,defaultFlogic,o,f,1,\"->\"). a_5(f,default,o,1,1,1). "
     "a_2(a_5,default,1).",
     "{-a_5(valueOf,defaultFlogic,o,f,1,\"->\"), a_5(f,default,o,1,1,1)}\n", "-filter=a_5"},
    {"no_facts_in_the_usual_space", "a_1(p,default). -a_2(p,d,1) :- a_1(p,default).",
     "{-a_2(p,d,1)}\n", "-nofacts"},
    {"integers", "#maxint = 2. a_2(p,d,X) :- #int(X). a_2(q,d,Z) :- a_2(p,d,X), Z = X + 1.",
     "{a_2(p,d,0), a_2(p,d,1), a_2(p,d,2), a_2(q,d,1), a_2(q,d,2)}\n"},
    {"weak_constraint", "a_1(p,d) v a_1(q,d). a_2(w,d,3). :~ a_1(p,d), a_2(w,d,W). [W:2]",
     "Best model: {a_1(q,d), a_2(w,d,3)}\nCost ([Weight:Level]): <[0:2]>\n"},
    {"variable_level", "a_3(w,d,3,4). :~ a_3(w,d,W,L). [W:L]",
     "Best model: {a_3(w,d,3,4)}\nCost ([Weight:Level]): <[3:4]>\n"},
    {"query", "a_2(p,d,1) v a_2(p,d,2). a_2(p,d,3). a_2(p,d,X)?", "3\n"},
    {"brave_query", "a_2(p,d,1) v a_2(p,d,2). a_2(p,d,3). a_2(p,d,X)?", "1\n2\n3\n", "-brave"},
    {"ground_query", "a_1(p,d). -a_1(q,d). a_1(p,d), not a_1(q,d), -a_1(q,d)?", "true\n"},
    {"filter", "a_1(p,d). -a_1(q,d). a_2(p,d,1). b.", "{a_1(p,d), -a_1(q,d)}\n", "-filter=a_1"},
    {"positive_filter", "a_2(p,d,1). -a_2(q,d,1). a_1(p,d).", "{a_2(p,d,1)}\n", "-pfilter=a_2"},
    {"no_facts", "a_1(p,d). -a_2(p,d,1). a_2(q,d,X) :- -a_2(p,d,X).", "{a_2(q,d,1)}\n", "-nofacts"},
};
INSTANTIATE_TEST_SUITE_P(Cases, BothForms, testing::ValuesIn(kBothForms), case_name);

TEST(Folding, LooksAtALargeProgramToItsEnd) {
  const std::string facts = numbered(20'000, "a_2(p,d,N).\n");
  EXPECT_EQ(run(facts + "a_1(P,d) :- a_2(P,d,7).", "-pfilter=a_1").output, "{a_1(p,d)}\n");
}

TEST(Folding, ReachesThePiecesOfALongBody) {
  const std::string all = translation("a_1(q,d) :- " + numbered(299, "a_2(p,d,N),") + "b.");
  EXPECT_EQ(all.substr(0, 22), "_h1:-a_2'p'default(0),");
  EXPECT_NE(all.find("\na_1'q'default:-_h37,a_2'p'default(296),"), std::string::npos);
}

TEST(Folding, LooksAtAllFiles) {
  const WorkFolder folder;
  folder.write("p", "a_2(p,d,1). b(P) :- a_2(P,d,1).");
  folder.write("q", "a_2(q,d,1). a_1(p,d).");
  folder.write("r", "a_2(q,d,1). a_1(p,d).\n#include <p>\n");
  for (const std::string_view files : {"dl p q", "dl q p", "dl r"}) {
    EXPECT_EQ(sorted(folder.run(files).output),
              sorted("{b(p), b(q), a_1(p,d), a_2(p,d,1), a_2(q,d,1)}\n"));
    const std::string all = folder.run(std::string(files) + " -translate").output;
    EXPECT_NE(all.find("a_1'p'default."), std::string::npos);
  }
}

// Random programs over few relations, constants where most of them allow folding, and layouts that
// put blanks, line ends, comments and nothing at all between any two tokens.
class RandomProgram {
 public:
  explicit RandomProgram(unsigned seed) : random_(seed) {}

  // Statements, each with its layout and a line end.
  std::vector<std::string> statements() {
    std::vector<std::string> all;
    for (int i = below(5) + 4; i > 0; --i) all.push_back(laid_out(statement()) + "\n");
    return all;
  }
  int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

 private:
  using Tokens = std::vector<std::string>;

  std::string one_of(const Tokens& words) {
    return words[static_cast<std::size_t>(below(static_cast<int>(words.size())))];
  }

  // In front of it a constant, or what keeps the relation from being folded.
  void add_atom(Tokens& out, const Tokens& values) {
    if (below(6) == 0) out.push_back("-");
    const bool has_variables = values.front() == "X";
    const bool is_open = below(8) == 0;
    const Tokens open = has_variables ? Tokens{"X", "Y", "1"} : Tokens{"1", "\"p\""};
    const int places = below(2);
    out.insert(
        out.end(),
        {"a_" + std::to_string(places + 1), "(", is_open ? one_of(open) : one_of({"p", "q", "not"}),
         ",", is_open ? one_of({"d", open.front()}) : one_of({"d", "default", "default"})});
    if (places != 0) out.insert(out.end(), {",", one_of(values)});
    out.push_back(")");
  }

  void add_body(Tokens& out) {
    const Tokens values{"X", "X", "Y", "1", "p"};
    out.insert(out.end(), {"n", "(", "X", ")", ",", "n", "(", "Y", ")"});
    for (int i = below(3) + 1; i > 0; --i) {
      out.push_back(",");
      const int kind = below(6);
      if (kind == 0) out.push_back("not");
      if (kind == 1)
        out.insert(out.end(), {"1", "<=", "#count", "{", "Z", ":", "n", "(", "Z", ")", ","});
      add_atom(out, values);
      if (kind == 1) out.push_back("}");
    }
  }

  Tokens statement() {
    const Tokens constants{"1", "2", "p"};
    Tokens out;
    const int kind = below(8);
    if (kind == 0) {
      out.push_back(":-");
      add_body(out);
      out.insert(out.end(), {",", "X", "<", "Y"});
    } else if (kind < 4) {
      add_atom(out, constants);
      if (kind == 1) {
        out.push_back("v");
        add_atom(out, constants);
      }
    } else {
      add_atom(out, {"X", "Y", "2"});
      out.push_back(":-");
      add_body(out);
    }
    out.push_back(".");
    return out;
  }

  std::string laid_out(const Tokens& tokens) {
    const int style = below(3);
    std::string text;
    for (const std::string& token : tokens) {
      const bool may_touch = text.empty() || !is_word(text.back()) || !is_word(token.front());
      const bool is_apart = style == 2 && below(2) == 0;
      if (!may_touch || is_apart) {
        text += is_apart ? one_of({" ", "\n", "\t ", " % a_1(X,Y). a_2\n", "% \"\n"}) : " ";
      }
      text += token;
    }
    return text;
  }

  static bool is_word(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
  }

  std::mt19937 random_;
};

TEST(Folding, ChangesNoAnswerOfRandomPrograms) {
  int folded = 0;
  for (unsigned seed = 0; seed < 120; ++seed) {
    RandomProgram program(seed);
    std::string texts[2] = {"n(1). n(2). n(p).\n", ""};
    for (const std::string& statement : program.statements()) texts[program.below(2)] += statement;
    const WorkFolder folder;
    folder.write("p", texts[0] + (program.below(2) == 0 ? "#include <q>\n" : ""));
    folder.write("q", texts[1]);
    const Outcome unfolded = folder.run("dl -nofold p q");
    const Outcome answers = folder.run("dl p q");
    EXPECT_EQ(sorted(answers.output), sorted(unfolded.output)) << texts[0] << "--- q\n" << texts[1];
    EXPECT_EQ(answers.errors + unfolded.errors, "");
    folded += folder.run("dl -translate p q").output.find('\'') != std::string::npos ? 1 : 0;
  }
  EXPECT_GT(folded, 60);
}

// The same through zarel: its own atoms, an included file, and text that it only passes on.
TEST(Folding, SeesIncludedAndVerbatimText) {
  const WorkFolder folder;
  folder.write("f.dl", "a_2(q,default,1).\n");
  for (const std::string_view rest :
       {"#include \"f.dl\"\np(X) :- q(X).\n", "ASITIS %*a_2(q,default,1).*%\np(X) :- q(X).\n",
        "q(1). ASITIS %*a_2(p,default,X):-b,a_2(q,default,X),a_2(R,S,X).b.*%\n",
        "#include \"f.dl\"\nR(X) :- s(R), q(X). s(p).\n"}) {
    folder.write("p.zrl", rest);
    const Outcome answers = folder.run("zarel -silent -filter=p,q p.zrl");
    EXPECT_EQ(sorted(answers.output), sorted("{p(1), q(1)}\n")) << rest;
  }
}

}    // namespace
}    // namespace dl_test
