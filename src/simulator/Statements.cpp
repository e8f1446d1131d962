#include "simulator/Statements.h"

#include <vector>

#include "core/General.h"
#include "partprogram/TableRows.h"
#include "simulator/Expressions.h"

namespace torvane::simulator {

namespace {

/// The value after "=", which ends the line.
std::optional<double> Assigned(ExpressionReader& reader) {
  if (!reader.Take('=')) return std::nullopt;
  const auto value = reader.Expression();
  return value && reader.AtEnd() ? value : std::nullopt;
}

bool AssignVariable(ExpressionReader& reader, ControllerMemory& memory) {
  const auto index = reader.BracketIndex();
  if (!index || !ControllerMemory::IsVariable(*index)) return false;
  const auto value = Assigned(reader);
  return value && memory.WriteVariable(*index, *value);
}

bool AssignNamedValue(ExpressionReader& reader, ControllerMemory& memory) {
  const std::string_view digits = reader.Digits();
  if (digits.empty() || digits.size() > 3) return false;
  const auto value = Assigned(reader);
  return value && memory.WriteNamedValue(static_cast<int>(core::LeadingNumber(digits)), *value);
}

bool WriteTableRow(ExpressionReader& reader, ControllerMemory& memory) {
  const bool spaced = reader.AtBlank();
  if (!reader.Take('(')) return false;
  const auto index = reader.Index();
  if (!index) return false;
  std::vector<double> values;
  values.reserve(8);
  while (reader.Take(',')) {
    const auto value = reader.Expression();
    if (!value) return false;
    values.push_back(*value);
  }
  if (!reader.Take(')') || !reader.AtEnd()) return false;
  // The mark of a restart table is told from the end row of a program by its blank.
  const bool mark = spaced && values.size() == 1 && values[0] == partprogram::EndMark;
  return mark ? memory.WriteRestartMark(*index, values[0]) : memory.WriteTable(*index, values);
}

bool SetOutput(ExpressionReader& reader, ControllerMemory& memory) {
  if (!reader.Take('(')) return false;
  const auto output = reader.Index();
  if (!output || !reader.Take(',')) return false;
  const auto value = reader.Expression();
  return value && reader.Take(')') && reader.AtEnd() && memory.WriteOutput(*output, *value);
}

bool StartRestart(ExpressionReader& reader, ControllerMemory& memory) {
  const std::string_view slot = reader.Digits();
  if (slot != "1" && slot != "2") return false;
  std::string_view fraction;
  if (reader.Take('.')) {
    fraction = reader.Digits();
    if (fraction.empty()) return false;
  }
  if (!core::EqualNoCase(reader.Word(), "R") || !reader.AtEnd()) return false;
  return memory.Listener() != nullptr &&
         memory.Listener()->RestartRequested(slot == "1" ? 1 : 2, fraction);
}

struct StatementForm {
  std::string_view Word;
  bool (*CarryOut)(ExpressionReader&, ControllerMemory&);
};

constexpr StatementForm StatementForms[] = {
    {"VR", AssignVariable}, {"TABLE", WriteTableRow}, {"M", AssignNamedValue},
    {"OP", SetOutput},      {"B", StartRestart},
};

}  // namespace

bool CarryOut(std::string_view line, ControllerMemory& memory) {
  ExpressionReader reader(line, memory);
  const std::string_view word = reader.Word();
  for (const auto& form : StatementForms) {
    if (core::EqualNoCase(word, form.Word)) return form.CarryOut(reader, memory);
  }
  return false;
}

}  // namespace torvane::simulator
