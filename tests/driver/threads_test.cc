// threads_test.cc - runs on several threads at once: each gets what it gets alone.
#include <algorithm>
#include <random>
#include <thread>

#include "driver/diagnostics.h"
#include "output/answer_set_reader.h"
#include "rewrite_fixture.h"
#include "support/fresh_run.h"

namespace zarel {
namespace {

// The golden inputs, each rewritten with and without linked templates and then read as answers.
struct Job {
  std::string path;
  RewriteOptions options;
};

std::vector<Job> all_jobs() {
  std::vector<Job> jobs;
  for (const auto& entry :
       std::filesystem::recursive_directory_iterator(PROJECT_FOLDER "/tests/golden")) {
    if (entry.path().extension() != ".zrl") continue;
    jobs.push_back({entry.path(), {}});
    jobs.push_back({entry.path(), {.run = {.OptionArityCheck = true, .links_templates = true}}});
  }
  return jobs;
}

std::string outcome(const Job& job) {
  const RewrittenProgram program = rewrite({job.path}, job.options);
  const FreshRun run;
  std::ostringstream printed;
  show_findings(printed, printed);
  try {
    read_answer_sets(std::string_view("{" + program.clauses + "}"));
  } catch (const RunEnd& end) {
    printed << "status " << end.status;
  }
  return program.clauses + program.verbatim + program.legend + program.output + program.messages +
         std::to_string(program.status) + printed.str();
}

TEST(Threads, RewriteAndReadAsIfAlone) {
  const std::vector<Job> jobs = all_jobs();
  std::vector<std::string> alone;
  alone.reserve(jobs.size());
  for (const Job& job : jobs) alone.push_back(outcome(job));
  constexpr unsigned kThreads = 4;
  std::vector<std::vector<std::string>> outcomes(kThreads, std::vector<std::string>(jobs.size()));
  std::vector<std::thread> threads;
  threads.reserve(kThreads);
  for (unsigned thread = 0; thread < kThreads; ++thread) {
    threads.emplace_back([&jobs, &own = outcomes[thread], thread] {
      std::vector<std::size_t> order(jobs.size());
      for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
      std::ranges::shuffle(order, std::mt19937(thread));
      for (const std::size_t i : order) own[i] = outcome(jobs[i]);
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_GT(jobs.size(), 40U);
  for (const std::vector<std::string>& own : outcomes) EXPECT_EQ(own, alone);
}

}    // namespace
}    // namespace zarel
