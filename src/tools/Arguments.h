// The arguments of a command line: its help, and what is wrong with them.
#pragma once

#include <functional>
#include <iosfwd>
#include <stdexcept>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace torvane::tools {

/// Exit statuses of the commands.
namespace ExitStatus {
inline constexpr int Good = 0;      ///< done; of a check: every program can be selected
inline constexpr int Refused = 1;   ///< something in what was asked about is not good
inline constexpr int WrongUse = 2;  ///< the question itself could not be answered
}  // namespace ExitStatus

/// A question that cannot be answered, in one plain sentence.
class WrongUse : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Checks of an option's text: empty for a good one, otherwise what is wrong. A range alone lets
/// "nan" through; an empty text is what a script gives whose variable was never set.
[[nodiscard]] std::string CheckNumber(const std::string& text);
[[nodiscard]] std::string CheckNotEmpty(const std::string& text);

/// `status`, or WrongUse's with a sentence on `errors` where what went to `out` did not get
/// through: nobody may take the rest of a report for the whole.
[[nodiscard]] int WhenWritten(const std::string& program, std::ostream& out, std::ostream& errors,
                              int status);

/// Reads arguments, given without the name of the program, into what `app` describes. False where
/// its help is asked for: then `help` takes the text, and what was read means nothing. Throws
/// WrongUse.
[[nodiscard]] bool ReadArguments(CLI::App& app, std::vector<std::string> arguments,
                                 std::string& help);

/// What is said of a wrong use: the fault, and where the options are told.
[[nodiscard]] std::string WrongUseText(const std::string& program, const WrongUse& fault);

/// The whole of a command of which nobody asks for the options alone: its help, or `work`, which
/// gives the exit status, or what is wrong with the arguments.
int RunCommand(CLI::App& app, std::vector<std::string> arguments, std::ostream& out,
               std::ostream& errors, const std::function<int()>& work);

}  // namespace torvane::tools
