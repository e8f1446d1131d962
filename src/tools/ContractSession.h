// What the clauses of the contract work with: the line, what was noticed on it, what was changed.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "link/Variables.h"
#include "tools/ContractLine.h"

namespace torvane::tools {

/// What the person at the machine is asked for.
enum class OperatorWish {
  CycleStart,
  NoCycleStart,  ///< the one asked for before is not wanted any more
  Stop,
  Release  ///< the stop, and then the end of the feed hold
};

struct ContractSettings {
  bool Run = true;         ///< with the table, the command word and a run
  int StartSeconds = 120;  ///< the operator has for the cycle start
  int ReplyMs = 10000;     ///< a reply may take
};

/// Why a clause could not be tried.
class NotTried : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct ContractParts {
  platform::EventLoop& Loop;
  platform::SerialPort& Port;  ///< open
  /// Throws NotTried where a cycle start is wished for and nobody hears of it.
  std::function<void(OperatorWish, const std::string& text)> Ask;
};

/// What is wrong with a line whatever it is about: the first case of each.
struct LineNotes {
  std::string Echo;
  std::string Prompt;
  std::string Late;
  std::string Beam;
};

class ContractSession {
 public:
  ContractSession(const ContractParts& parts, const ContractSettings& settings)
      : settings_(settings), ask_(parts.Ask), line_(parts.Loop, parts.Port, settings.ReplyMs) {}

  /// One line, with the notes that any exchange makes.
  Exchange Send(std::string_view line);
  /// True where the reply holds no "%".
  bool Command(std::string_view line);
  /// The value of an expression, whether or not its echo and its prompt are as they should; nothing
  /// where the reply holds a "%" or no number, or one that a pause may have cut; and on a line that
  /// has given an echo once, where it is missing: that is the rest of a reply before.
  std::optional<double> Value(std::string_view expression);
  /// The same; throws NotTried where there is none.
  double Number(std::string_view expression);
  /// VR(19), which also tells of the beam. Throws NotTried where it gives no number.
  int Status();
  /// mm, measured, of the axes X, Y and Z; throws NotTried where it cannot be had.
  double Position(std::size_t axis) { return InMm(link::MeasuredPosition, axis); }
  /// The same, of where the axis is to be.
  double DemandPosition(std::size_t axis) { return InMm(link::DemandPosition, axis); }
  /// The divisor of the positions is asked for again: one that was read wrong is not believed
  /// twice.
  void ForgetDivisor() { divisor_.reset(); }

  /// Writes a variable and remembers what it held, for the first time that this is called for it.
  bool Change(std::string_view variable, double value);
  /// Writes a variable that has been changed before; remembers nothing.
  bool Write(std::string_view variable, double value);
  /// Puts back what was changed, the last first, where `allowed` says of a variable that it may be
  /// written, and reads it again. Gives what was not put back; throws nothing.
  [[nodiscard]] std::vector<std::string> PutBack(
      const std::function<bool(std::string_view variable)>& allowed);

  /// Asks every 50 ms until `holds`, or for `ms`. The last answer.
  bool Await(int ms, const std::function<bool()>& holds);

  void Ask(OperatorWish wish, const std::string& text) const { ask_(wish, text); }
  [[nodiscard]] ContractLine& Line() { return line_; }
  [[nodiscard]] const ContractSettings& Settings() const { return settings_; }
  [[nodiscard]] const LineNotes& Notes() const { return notes_; }

 private:
  struct Kept {
    std::string Variable;
    double Value = 0;
  };

  [[nodiscard]] std::optional<double> ValueOf(const Exchange& exchange) const;
  double InMm(const link::AxisExpressions& axes, std::size_t axis);
  /// What is wrong with a variable that has been put back; empty where nothing is.
  [[nodiscard]] std::string WriteBack(const Kept& kept);

  ContractSettings settings_;
  std::function<void(OperatorWish, const std::string&)> ask_;
  ContractLine line_;
  LineNotes notes_;
  std::vector<Kept> kept_;
  bool echoes_ = false;            ///< a line has come back as it should
  std::optional<double> divisor_;  ///< of the positions of X and Y
};

/// Two readings of a head that stands differ by no more, mm.
inline constexpr double PositionSlack = 0.1;

/// A number with as many decimals as it has.
[[nodiscard]] std::string FigureText(double value);
/// "VR(95) is 7, not 8".
[[nodiscard]] std::string Instead(std::string_view what, double found, double wanted);

/// The text between the echo and the prompt of a reply, without the line end in front of it.
[[nodiscard]] std::string_view AnswerOf(const Exchange& exchange);

}  // namespace torvane::tools
