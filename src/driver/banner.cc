#include "driver/banner.h"

#include <ostream>
#include <string_view>

#include "driver/diagnostics.h"

namespace zarel {
namespace {

constexpr std::string_view zarel_version = "1.5.1";

constexpr std::string_view kLicense =
    "Copyright (c) 2026 the Zarel developers\n"
    "\n"
    "Permission is hereby granted, free of charge, to any person obtaining a copy of this software "
    "and associated\n"
    "documentation files (the \"Software\"), to deal in the Software without restriction, "
    "including without limitation\n"
    "the rights to use, copy, modify, merge, publish, distribute, sublicense, and/or sell copies "
    "of the Software, and to\n"
    "permit persons to whom the Software is furnished to do so, subject to the following "
    "conditions:\n"
    "\n"
    "The above copyright notice and this permission notice shall be included in all copies or "
    "substantial portions of\n"
    "the Software.\n"
    "\n"
    "THE SOFTWARE IS PROVIDED \"AS IS\", WITHOUT WARRANTY OF ANY KIND, EXPRESS OR IMPLIED, "
    "INCLUDING BUT NOT LIMITED TO THE\n"
    "WARRANTIES OF MERCHANTABILITY, FITNESS FOR A PARTICULAR PURPOSE AND NONINFRINGEMENT. IN NO "
    "EVENT SHALL THE AUTHORS OR\n"
    "COPYRIGHT HOLDERS BE LIABLE FOR ANY CLAIM, DAMAGES OR OTHER LIABILITY, WHETHER IN AN ACTION "
    "OF CONTRACT, TORT OR\n"
    "OTHERWISE, ARISING FROM, OUT OF OR IN CONNECTION WITH THE SOFTWARE OR THE USE OR OTHER "
    "DEALINGS IN THE SOFTWARE.\n";

constexpr std::string_view kLongUsage =
    "Zarel Specific options:\n"
    "\n"
    "--higherorder               Enables higher order predicate names\n"
    "--solver=[path_name]        The path of the solver executable file \n"
    "                            For example: --solver=/orvund/ov\n"
    "--preparsing                Print out re-written code and exit\n"
    "--postparsing               Maps higher-order atoms into first-order atom\n"
    "--framespace                Activates displaying for framespace directives\n"
    "--uri                       Enables more verbose output for URI constants\n"
    "--filter=name1,..,nameN     Output only instances of the specified predicates\n"
    "--pfilter=name1,..,nameN    Output only positive of the  instances \n"
    "                            specified predicates\n"
    "--solverparams={options}    The specific solver options \n"
    "                            For example: -solverparams={-v -nofacts}\n"
    "--aritycheck                Forces to check same arity for the same\n"
    "                            predicate name\n"
    "--safetycheck               Forces to check safety of rule's head variables\n"
    "\n"
    "\n";

// The notice up to its third blank line, the blank lines left out.
void print_first_paragraphs(std::ostream& out) {
  constexpr int kParagraphs = 3;
  int blank_lines = 0;
  char previous = '\0';
  for (const char c : kLicense) {
    const bool is_blank_line = c == '\n' && previous == '\n';
    previous = c;
    if (!is_blank_line) {
      out << c;
    } else if (++blank_lines == kParagraphs) {
      break;
    }
  }
  out << '\n';
}

}    // namespace

void printLogo() {
  std::ostream& out = standard_output();
  out << "Zarel. Templates, frames and higher-order names for answer-set programs.\n"
      << "[V" << zarel_version << " - Build zarel/" << __DATE__ << "   gcc " << __VERSION__
      << "]\n\n";
  if (report_state().OptionVerbosity != 0) print_first_paragraphs(out);
}

void printUsage(std::ostream& out, Usage form) {
  out << "usage:  " << report_state().WhoAmI
      << " {FRONTEND} {OPTIONS} [filename [filename [...]]]\n\n";
  if (form == Usage::kShort) {
    standard_output() << "Specify -help for more detailed usage information.\n\n";
  } else {
    out << kLongUsage;
  }
}

void print_license() {
  standard_output() << kLicense << '\n';
}

}    // namespace zarel
