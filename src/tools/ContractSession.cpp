#include "tools/ContractSession.h"

#include <algorithm>
#include <cctype>
#include <cmath>

#include "core/General.h"
#include "core/MachineState.h"
#include "link/Variables.h"

namespace torvane::tools {

namespace {

constexpr int LookMs = 50;

/// A reply with its unseen characters by name.
std::string Shown(std::string_view text) {
  constexpr std::size_t Longest = 60;
  std::string shown;
  for (const char c : text.substr(0, Longest)) {
    if (c == '\r') {
      shown += "<CR>";
    } else if (c == '\n') {
      shown += "<LF>";
    } else {
      shown += std::isprint(static_cast<unsigned char>(c)) != 0 ? c : '?';
    }
  }
  return shown;
}

void Note(std::string& note, const Exchange& exchange) {
  if (!note.empty()) return;
  note = "\"" + exchange.Line + "\" gave " + Shown(exchange.Reply);
}

bool Echoed(const Exchange& exchange) {
  return exchange.Line.empty() || exchange.Reply.starts_with(exchange.Line + "\r\n");
}

/// A reply that is cut by a pause may hold the first digits only.
bool Whole(const Exchange& exchange, std::string_view answer) {
  return exchange.Prompt || answer.find_first_of("\r\n") != std::string_view::npos;
}

bool StartsNumber(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  const auto at = text.find_first_not_of("+-");
  return at <= 1 && at < text.size() &&
         (std::isdigit(static_cast<unsigned char>(text[at])) != 0 || text[at] == '.');
}

}  // namespace

std::string FigureText(double value) { return core::NumberText(value, -1); }

std::string Instead(std::string_view what, double found, double wanted) {
  std::string text(what);
  text += " is " + FigureText(found);
  return text + ", not " + FigureText(wanted);
}

std::string_view AnswerOf(const Exchange& exchange) {
  std::string_view text = exchange.Reply;
  if (!exchange.Line.empty() && text.starts_with(exchange.Line)) {
    text.remove_prefix(exchange.Line.size());
  }
  while (!text.empty() && (text.front() == '\r' || text.front() == '\n')) text.remove_prefix(1);
  return text;
}

Exchange ContractSession::Send(std::string_view line) {
  Exchange exchange = line_.Send(line);
  const bool echoed = Echoed(exchange);
  if (!echoed) Note(notes_.Echo, exchange);
  echoes_ = echoes_ || (echoed && !line.empty());
  if (!exchange.Prompt) Note(notes_.Prompt, exchange);
  if (exchange.Ms > settings_.ReplyMs && notes_.Late.empty()) {
    notes_.Late = "\"" + exchange.Line + "\" took " + std::to_string(exchange.Ms) + " ms";
  }
  return exchange;
}

bool ContractSession::Command(std::string_view line) {
  return Send(line).Reply.find('%') == std::string::npos;
}

std::optional<double> ContractSession::ValueOf(const Exchange& exchange) const {
  const std::string_view answer = AnswerOf(exchange);
  const bool its = !echoes_ || Echoed(exchange);
  const bool good = exchange.Reply.find('%') == std::string::npos && StartsNumber(answer);
  if (!its || !good || !Whole(exchange, answer)) return std::nullopt;
  return core::LeadingNumber(answer);
}

std::optional<double> ContractSession::Value(std::string_view expression) {
  return ValueOf(Send("? " + std::string(expression)));
}

double ContractSession::Number(std::string_view expression) {
  const auto value = Value(expression);
  if (!value) throw NotTried(std::string(expression) + " gives no number");
  return *value;
}

int ContractSession::Status() {
  const int status = core::TruncateToInt32(Number(link::Variable::Status));
  if ((status & core::StatusBit::Beam) != 0 && notes_.Beam.empty()) {
    notes_.Beam = "the status word was " + std::to_string(status);
  }
  return status;
}

double ContractSession::InMm(const link::AxisExpressions& axes, std::size_t axis) {
  const double stored = Number(axes[axis]);
  if (axis > 1) return stored;
  if (!divisor_) {
    const double divisor = Number(link::Variable::PositionDivisor);
    divisor_ = divisor == 0 ? 1 : divisor;
  }
  return stored / *divisor_;
}

bool ContractSession::Change(std::string_view variable, double value) {
  const auto known = [&](const Kept& kept) { return kept.Variable == variable; };
  if (std::none_of(kept_.begin(), kept_.end(), known)) {
    kept_.push_back({std::string(variable), Number(variable)});
  }
  return Write(variable, value);
}

bool ContractSession::Write(std::string_view variable, double value) {
  return Command(link::Assignment(variable, FigureText(value)));
}

std::string ContractSession::WriteBack(const Kept& kept) {
  constexpr double Slack = 1e-6;  // relative
  if (!Write(kept.Variable, kept.Value)) return "it was refused";
  const double found = Number(kept.Variable);
  if (std::abs(found - kept.Value) <= Slack * std::max(1.0, std::abs(kept.Value))) return {};
  return "it is " + FigureText(found);
}

std::vector<std::string> ContractSession::PutBack(
    const std::function<bool(std::string_view)>& allowed) {
  std::vector<std::string> lost;
  bool silent = false;
  for (; !kept_.empty(); kept_.pop_back()) {
    const Kept& kept = kept_.back();
    std::string text = kept.Variable + " to " + FigureText(kept.Value);
    try {
      if (!silent && allowed(kept.Variable)) {
        const auto wrong = WriteBack(kept);
        if (wrong.empty()) continue;
        text += ": " + wrong;
      }
    } catch (const ControllerSilent&) {
      silent = true;  // each further line would be waited for as long
    } catch (const std::exception& fault) {
      text += ": ";
      text += fault.what();
    }
    lost.push_back(std::move(text));
  }
  return lost;
}

bool ContractSession::Await(int ms, const std::function<bool()>& holds) {
  const auto end = line_.NowMs() + ms;
  while (!holds()) {
    if (line_.NowMs() >= end) return false;
    line_.Sleep(LookMs);
  }
  return true;
}

}  // namespace torvane::tools
