#include "driver/options.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace zarel {
namespace {

constexpr std::string_view kListOpening = "-solverparams={";

// Both spellings of an option: one dash, and two.
bool is_option(std::string_view argument, std::string_view option) {
  return argument == option || (argument.starts_with('-') && argument.substr(1) == option);
}

bool begins_option(std::string_view argument, std::string_view option) {
  return argument.starts_with(option) ||
         (argument.starts_with('-') && argument.substr(1).starts_with(option));
}

struct FlagOption {
  std::string_view spelling;
  bool Options::*flag;    // null: the option changes nothing
};

constexpr std::array kFlags = {
    FlagOption{"-silent", &Options::OptionSilent},
    FlagOption{"-higherorder", nullptr},
    FlagOption{"-framespace", &Options::shows_frame_spaces},
    FlagOption{"-uri", &Options::shows_uris},
    FlagOption{"-safetycheck", &Options::OptionSafetyCheck},
    FlagOption{"-aritycheck", &Options::OptionArityCheck},
    FlagOption{"-linktemplates", &Options::links_templates},
    FlagOption{"-preparsing", &Options::is_preparsing},
    FlagOption{"-postparsing", &Options::is_postparsing},
};

// What stands between the first "=" and the next one, or the end.
std::string_view value_of(std::string_view argument) {
  const std::string_view value = argument.substr(argument.find('=') + 1);
  return value.substr(0, value.find('='));
}

void add_names(std::vector<std::string>& names, std::string_view list) {
  while (!list.empty()) {
    const std::size_t comma = std::min(list.find(','), list.size());
    if (comma != 0) names.emplace_back(list.substr(0, comma));
    list.remove_prefix(std::min(comma + 1, list.size()));
  }
}

class ArgumentScan {
 public:
  // False when the scan ends with this argument.
  bool take(std::string_view argument) {
    if (argument == "}") {
      is_list_open_ = false;
    } else if (!argument.starts_with('-')) {
      options_.files.emplace_back(argument);
    } else if (is_list_open_ || begins_option(argument, kListOpening)) {
      take_solver_parameter(argument);
    } else {
      take_option(argument);
    }
    return options_.end == ScanEnd::kRun;
  }

  Options finished() && {
    if (is_list_open_ && options_.end == ScanEnd::kRun) options_.end = ScanEnd::kUsageError;
    return std::move(options_);
  }

 private:
  // Each argument of the list gives one word at most: what stands behind its first blank is
  // dropped.
  void take_solver_parameter(std::string_view argument) {
    is_list_open_ = true;
    if (argument.ends_with('}')) {
      argument = argument.substr(0, argument.find('}'));
      is_list_open_ = false;
    }
    if (begins_option(argument, kListOpening)) argument.remove_prefix(argument.find('{') + 1);
    const std::string_view word = argument.substr(0, argument.find(' '));
    if (!word.empty()) options_.solver_parameters.append(word).append(" ");
  }

  void take_option(std::string_view argument) {
    const auto flag = std::find_if(kFlags.begin(), kFlags.end(), [&](const FlagOption& option) {
      return is_option(argument, option.spelling);
    });
    if (flag != kFlags.end()) {
      if (flag->flag != nullptr) options_.*(flag->flag) = true;
    } else if (begins_option(argument, "-filter=")) {
      add_names(options_.filters, value_of(argument));
    } else if (begins_option(argument, "-pfilter=")) {
      add_names(options_.positive_filters, value_of(argument));
    } else if (begins_option(argument, "-solver=")) {
      if (const std::string_view path = value_of(argument); !path.empty()) options_.solver = path;
    } else {
      take_single_spelling(argument);
    }
  }

  void take_single_spelling(std::string_view argument) {
    if (argument == "-v") {
      options_.OptionVerbosity = true;
    } else if (is_option(argument, "-license")) {
      options_.end = ScanEnd::kLicense;
    } else if (argument == "-h" || is_option(argument, "-help")) {
      options_.end = ScanEnd::kHelp;
    } else {
      options_.end = ScanEnd::kUsageError;
    }
  }

  Options options_;
  bool is_list_open_ = false;
};

}    // namespace

Options scan_arguments(std::span<char* const> arguments) {
  ArgumentScan scan;
  for (const char* argument : arguments) {
    if (!scan.take(argument)) break;
  }
  return std::move(scan).finished();
}

}    // namespace zarel
