// Reading from files and pipes, in pieces.

#include <array>
#include <chrono>
#include <fcntl.h>
#include <functional>
#include <thread>
#include <unistd.h>
#include <utility>

#include "output/output_scanner.h"
#include "output/sinks.h"
#include "reading_fixture.h"

namespace zarel {
namespace {

class Input : public ReadingTest<testing::Test> {
 protected:
  Input() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) std::abort();
    in_.reset(fdopen(ends[0], "r"));
    out_.reset(fdopen(ends[1], "w"));
    std::setvbuf(out_.get(), nullptr, _IONBF, 0);
  }
  void send(std::string_view text) {
    EXPECT_EQ(std::fwrite(text.data(), 1, text.size(), out_.get()), text.size());
  }
  // What comes of reading what another thread sends, in pieces of this length.
  std::string read_sent(std::string_view text, std::size_t piece) {
    std::thread writer([&] {
      for (std::size_t at = 0; at < text.size(); at += piece) {
        send(text.substr(at, piece));
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
      }
      out_.reset();
    });
    EXPECT_EQ(read_answer_sets(in_.get()), 0);
    writer.join();
    return output_.str();
  }

  File in_, out_;
};

// Says what was printed when it is flushed.
struct Answers : std::stringbuf {
  explicit Answers(std::function<void(std::string)> say) : when_flushed(std::move(say)) {}
  int sync() override {
    when_flushed(str());
    return 0;
  }
  std::function<void(std::string)> when_flushed;
};

TEST_F(Input, PrintsCompleteItemsBeforeItWaitsForMore) {
  send("{a_2(p, default)}\n{a_2(q, ");
  Answers answers([this](const std::string& printed) {
    // Nothing more would ever come if the first answer set were held back.
    if (printed == "{p}\n" && out_) {
      send("default)}");
      out_.reset();
    }
  });
  std::ostream output(&answers);
  current_run().output = &output;
  EXPECT_EQ(read_answer_sets(in_.get()), 0);
  EXPECT_EQ(answers.str(), "{p}\n{q}\n");
}

TEST_F(Input, TakesPiecesOfAnyLength) {
  EXPECT_EQ(read_sent("{a_3(\"p q\", default, word), -a_2(q12, s)}\r\n12, f(\"x\ny\")", 1),
            "{\"p q\"(word), -q12@s}\n12,f(\"x\ny\")\n");
}

TEST_F(Input, TakesAtomsThatArriveInTwoPieces) {
  const std::string atoms = repeated("a_4(p,default,\"x y\",z1),", 1000);
  EXPECT_EQ(read_sent(joined({"{", atoms, "a_2(q,s)}"}), 997),
            joined({"{", repeated("p(\"x y\",z1), ", 1000), "q@s}\n"}));
}

TEST_F(Input, TakesLongTokensFromAPipeInLinearTime) {
  fcntl(fileno(in_.get()), F_SETPIPE_SZ, 4096);
  const std::string text = joined({"\"", repeated("x\n", 10000000), "\""});
  EXPECT_TRUE(read_sent(text, text.size()) == text + "\n");
}

TEST_F(Input, IsReadWhileAnotherInputIs) {
  using std::string_view_literals::operator""sv;
  const File file(std::tmpfile());
  auto append = [end = off_t{0}, &file](std::string_view text) mutable {
    EXPECT_EQ(pwrite(fileno(file.get()), text.data(), text.size(), end), text.size());
    end += static_cast<off_t>(text.size());
  };
  // The file ends within a string behind a "-", an object in front of it; so does the other text.
  append("{a_5(valueOf,sFlogic,o,a,v,\"->\"), a_2(p,s), -a_3(q,s,\"x\0"sv);
  bool has_grown = false;
  const auto grown = [&] {
    if (std::exchange(has_grown, true)) return false;
    EXPECT_EQ(read_answer_sets("{a_5(valueOf,sFlogic,o,b,w,\"->\"), a_2(r,s)} {-a_3(t,s,\"\0"sv),
              1);
    append("y\")}");
    return true;
  };
  EXPECT_EQ(read_answer_sets(file.get(), grown), 0);
  EXPECT_EQ(output_.str(), "{r@s, o[b->w]@s}\n{p@s, -q(\"x\0y\")@s, o[a->v]@s}\n"sv);
  EXPECT_EQ(errors_.str(), "line 1: syntax error.\n");
}

TEST_F(Input, EndsTheRunWhenItCannotBeRead) {
  // A read that would have to wait fails, in the middle of terms for which the stack has grown.
  fcntl(fileno(in_.get()), F_SETFL, O_NONBLOCK);
  send(joined({"{a_2(p, default)} x, ", repeated("f(", 5000)}));
  int status = 0;
  try {
    read_answer_sets(in_.get());
  } catch (const RunEnd& end) {
    status = end.status;
  }
  EXPECT_EQ(status, 2);
  EXPECT_EQ(output_.str() + errors_.str(), "{p}\ninput in flex scanner failed\n");
  EXPECT_EQ(read("y"), "y\n");
}

TEST_F(Input, ReadsToTheEndWhenNothingCanBeWritten) {
  output_.setstate(std::ios::badbit);
  EXPECT_EQ(read_answer_sets(repeated("{a_2(p, default)}", 10000)), 0);
  EXPECT_TRUE(output_.bad());
}

TEST_F(Input, NamesScannerFunctionsWithTheirPrefix) {
  const auto sink = make_text_sink(output_, current_run());
  AnswerEvents events(*sink, {});
  outputScanner input(events);
  for (const char* function : {"yy_create_buffer", "yyensure_buffer_stack", "yy_get_next_buffer"})
    EXPECT_THROW(input.end_scanning(joined({"out of memory in ", function, "()"}).c_str()), RunEnd);
  EXPECT_EQ(errors_.str(),
            "out of memory in output_yy_create_buffer()\n"
            "out of memory in output_yyensure_buffer_stack()\n"
            "out of memory in yy_get_next_buffer()\n");
}

}    // namespace
}    // namespace zarel
