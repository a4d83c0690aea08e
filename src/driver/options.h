#pragma once
// options.h - the command line, taken apart.

#include <span>
#include <string>
#include <vector>

#include "model/run.h"

namespace zarel {

// How the scan of the command line ended.
enum class ScanEnd {
  kRun,           // go on
  kHelp,          // "-h", "-help", "--help"
  kLicense,       // "-license"
  kUsageError,    // an unknown option, or a list of solver parameters that nothing closes
};

// What a run is given, and what the driver itself asks for.
struct Options : RunOptions {
  ScanEnd end = ScanEnd::kRun;
  std::vector<std::string> files;    // in the order given
  std::string solver = "dl";
  std::string solver_parameters;                // words, each followed by one blank
  std::vector<std::string> filters;             // names of "-filter="
  std::vector<std::string> positive_filters;    // names of "-pfilter="
  bool OptionSilent = false;
  bool OptionVerbosity = false;
  bool shows_frame_spaces = false;    // "-framespace"
  bool shows_uris = false;            // "-uri"
  bool is_preparsing = false;
  bool is_postparsing = false;
  std::string semantics;    // the library read behind the files; no option sets it
};

// Reads the arguments (the program's name left out) in order, up to the one that ends the scan.
Options scan_arguments(std::span<char* const> arguments);

}    // namespace zarel
