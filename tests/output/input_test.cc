// Reading from files and pipes, in pieces.

#include <array>
#include <chrono>
#include <fcntl.h>
#include <memory>
#include <thread>
#include <unistd.h>

#include "output/scanner_input.h"
#include "reading_fixture.h"

namespace zarel {
namespace {

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

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

  File in_, out_;
};

// What is written into the pipe in answer to what was printed.
class Answers : public std::stringbuf {
 public:
  explicit Answers(std::function<void(std::string)> when_flushed)
      : when_flushed_(std::move(when_flushed)) {}

 private:
  int sync() override {
    when_flushed_(str());
    return 0;
  }
  std::function<void(std::string)> when_flushed_;
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
  report_state().output = &output;
  EXPECT_EQ(read_answer_sets(in_.get()), 0);
  EXPECT_EQ(answers.str(), "{p}\n{q}\n");
}

TEST_F(Input, TakesPiecesOfAnyLength) {
  const std::string_view text = "{a_3(\"p q\", default, word), -a_2(q12, s)}\r\n12, f(\"x\ny\")";
  std::thread writer([&] {
    for (const char c : text) {
      send(std::string_view(&c, 1));
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    out_.reset();
  });
  EXPECT_EQ(read_answer_sets(in_.get()), 0);
  writer.join();
  EXPECT_EQ(output_.str(), "{\"p q\"(word), -q12@s}\n12,f(\"x\ny\")\n");
}

TEST_F(Input, TakesLongTokensFromAPipeInLinearTime) {
  fcntl(fileno(in_.get()), F_SETPIPE_SZ, 4096);
  const std::string text = joined({"\"", repeated("x\n", 10000000), "\""});
  std::thread writer([&] {
    send(text);
    out_.reset();
  });
  EXPECT_EQ(read_answer_sets(in_.get()), 0);
  writer.join();
  EXPECT_TRUE(output_.str() == text + "\n");
}

TEST_F(Input, EndsTheRunWhenItCannotBeRead) {
  // A read that would have to wait fails, in the middle of terms for which the stack has grown.
  fcntl(fileno(in_.get()), F_SETFL, O_NONBLOCK);
  send(joined({"{a_2(p, default)} x, ", repeated("f(", 5000)}));
  try {
    read_answer_sets(in_.get());
    FAIL() << "no end";
  } catch (const RunEnd& end) {
    EXPECT_EQ(end.status, 2);
  }
  EXPECT_EQ(output_.str(), "{p}\n");
  EXPECT_EQ(errors_.str(), "input in flex scanner failed\n");
  EXPECT_EQ(read_answer_sets("y"), 0);
  EXPECT_EQ(output_.str(), "{p}\ny\n");
}

TEST_F(Input, ReadsToTheEndWhenNothingCanBeWritten) {
  output_.setstate(std::ios::badbit);
  EXPECT_EQ(read_answer_sets(repeated("{a_2(p, default)}", 10000)), 0);
  EXPECT_TRUE(output_.bad());
}

TEST_F(Input, NamesScannerFunctionsWithTheirPrefix) {
  const auto message = [this](const char* text) {
    errors_.str("");
    EXPECT_THROW(end_scanning(text), RunEnd);
    return errors_.str();
  };
  EXPECT_EQ(message("out of dynamic memory in yy_create_buffer()"),
            "out of dynamic memory in output_yy_create_buffer()\n");
  EXPECT_EQ(message("out of dynamic memory in yyensure_buffer_stack()"),
            "out of dynamic memory in output_yyensure_buffer_stack()\n");
  EXPECT_EQ(message("out of dynamic memory in yy_get_next_buffer()"),
            "out of dynamic memory in yy_get_next_buffer()\n");
}

}    // namespace
}    // namespace zarel
