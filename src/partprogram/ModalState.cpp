#include "partprogram/ModalState.h"

#include <cmath>
#include <string>

namespace torvane::partprogram {

using core::WordValue;

ModalState ModalState::AtStart(const core::MachineData& machine) {
  ModalState state;
  state.Current = {machine.LoadPositionX, machine.LoadPositionY, 0};
  state.Previous = state.Current;
  state.Limits = {machine.TravelMinX, machine.TravelMaxX, machine.TravelMinY, machine.TravelMaxY};
  return state;
}

// ---- reading ----

WordValue WordReader::Checked(WordValue value) {
  if (std::abs(value.Value) <= LargestWord) return value;
  Raise(ReadFault::NumberRange);
  return {};
}

void WordReader::Raise(ReadFault fault) {
  if (fault_ == ReadFault::None) fault_ = fault;
}

WordValue WordReader::Value(const Block& block, char letter) {
  if (!block.Has(letter)) return {};
  return Value(block.Text(), std::string_view(&letter, 1));
}

WordValue WordReader::Value(std::string_view text, std::string_view key) {
  return Checked(GetWordValue(text, key, *parameters_, &fault_));
}

WordValue WordReader::ValueAt(std::string_view text, std::size_t from) {
  return Checked(ReadExpression(text, from, *parameters_, &fault_));
}

WordValue WordReader::Integer(std::string_view text, std::string_view key) {
  return GetWordInteger(text, key, &fault_);
}

double WordReader::ValueOrZero(const Block& block, char letter) {
  const WordValue value = Value(block, letter);
  return value.Found ? value.Value : 0;
}

double WordReader::LengthOrZero(const Block& block, char letter, bool imperial) {
  return ValueOrZero(block, letter) * (imperial ? InchFactor : 1);
}

// ---- position ----

namespace {

WordValue InMillimetres(WordValue value, bool imperial) {
  if (value.Found && imperial) value.Value *= InchFactor;
  return value;
}

/// One axis of the main file.
void MoveAxis(const WordValue& word, bool incremental, bool mirrored, float offset,
              float& current) {
  if (!word.Found) return;
  const double from = incremental ? current : offset;
  current = static_cast<float>(mirrored ? from - word.Value : from + word.Value);
}

/// One local axis of a subroutine.
void MoveLocal(const WordValue& word, bool incremental, float& local) {
  if (!word.Found) return;
  local = static_cast<float>(incremental ? local + word.Value : word.Value);
}

}  // namespace

void ReadPositionWords(const Block& block, WordReader& reader, ModalState& state) {
  state.X = InMillimetres(reader.Value(block, 'X'), state.Imperial);
  state.Y = InMillimetres(reader.Value(block, 'Y'), state.Imperial);
  state.Z = reader.Value(block, 'Z');
}

bool UpdatePosition(const Block& block, WordReader& reader, bool inSubroutine, SubLevel& level,
                    ModalState& state) {
  state.Previous = state.Current;
  ReadPositionWords(block, reader, state);
  if (!state.X.Found && !state.Y.Found && !state.Z.Found) return false;
  Point3& current = state.Current;
  if (inSubroutine) {
    MoveLocal(state.X, state.Incremental, level.LocalX);
    MoveLocal(state.Y, state.Incremental, level.LocalY);
    core::Vector2 local{level.LocalX, level.LocalY};
    if (level.Rotation != 0) local = core::RotateAbout({0, 0}, level.Rotation, local);
    current.X = static_cast<float>(local.X + level.OriginX);
    current.Y = static_cast<float>(local.Y + level.OriginY);
  } else {
    MoveAxis(state.X, state.Incremental, state.MirrorX, state.OffsetX, current.X);
    MoveAxis(state.Y, state.Incremental, state.MirrorY, state.OffsetY, current.Y);
  }
  if (state.Incremental) {
    // A block without Z counts its -999 like any other number. No table row shows the height.
    current.Z = static_cast<float>(current.Z + state.Z.Value);
  } else if (state.Z.Found) {
    current.Z = static_cast<float>(state.Z.Value);
  }
  return true;
}

void AddWorkOffset(const Block& block, WordReader& reader, ModalState& state) {
  const double x = reader.LengthOrZero(block, 'X', state.Imperial);
  const double y = reader.LengthOrZero(block, 'Y', state.Imperial);
  state.OffsetX = static_cast<float>(state.MirrorX ? state.OffsetX - x : state.OffsetX + x);
  state.OffsetY = static_cast<float>(state.MirrorY ? state.OffsetY - y : state.OffsetY + y);
}

void SetWorkOffset(const Block& block, WordReader& reader, ModalState& state) {
  ReadPositionWords(block, reader, state);
  const auto set = [](const WordValue& word, bool mirrored, float current, float& offset) {
    if (!word.Found) return;
    offset = static_cast<float>(mirrored ? current + word.Value : current - word.Value);
  };
  set(state.X, state.MirrorX, state.Current.X, state.OffsetX);
  set(state.Y, state.MirrorY, state.Current.Y, state.OffsetY);
}

// ---- parameters ----

namespace {

/// A "P" with "=" at the second or third place after it.
bool StartsAssignment(std::string_view text, std::size_t at) {
  if (text[at] != 'P') return false;
  return (at + 2 < text.size() && text[at + 2] == '=') ||
         (at + 3 < text.size() && text[at + 3] == '=');
}

std::size_t FindAssignment(std::string_view text, std::size_t from) {
  for (std::size_t at = text.find('P', from); at != std::string_view::npos;
       at = text.find('P', at + 1)) {
    if (StartsAssignment(text, at)) return at;
  }
  return std::string_view::npos;
}

void Assign(std::string_view text, WordReader& reader, Parameters& parameters) {
  const WordValue number = reader.Integer(text, "P");
  if (number.Value < 0) return;
  if (number.Value >= static_cast<double>(parameters.Values.size())) {
    reader.Raise(ReadFault::ParameterNumber);
    return;
  }
  const std::string key = core::IntegerText(static_cast<std::int16_t>(number.Value)) + "=";
  ReadFault fault = ReadFault::None;
  double value = GetWordValue(text, key, parameters, &fault).Value;
  if (fault != ReadFault::None) reader.Raise(fault);
  if (!(std::abs(value) <= LargestParameter)) {
    reader.Raise(ReadFault::NumberRange);
    value = 0;
  }
  parameters.Values[static_cast<std::size_t>(number.Value)] = value;
}

}  // namespace

void AssignParameters(const Block& block, WordReader& reader, Parameters& parameters) {
  const std::string_view text = block.Text();
  std::size_t at = FindAssignment(text, 0);
  while (at != std::string_view::npos) {
    const std::size_t next = FindAssignment(text, at + 1);
    Assign(text.substr(at, next == std::string_view::npos ? next : next - at), reader, parameters);
    at = next;
  }
}

// ---- decisions ----

namespace {

struct Comparison {
  std::string_view Text;
  bool (*Holds)(double left, double right);
};

/// The forms with "!" never arrive here: a "!" begins the comment of the line.
constexpr std::array<Comparison, 6> Comparisons = {{
    {"=", [](double left, double right) { return left == right; }},
    {"!=", [](double left, double right) { return left != right; }},
    {"<", [](double left, double right) { return left < right; }},
    {"!<", [](double left, double right) { return !(left < right); }},
    {">", [](double left, double right) { return left > right; }},
    {"!>", [](double left, double right) { return !(left > right); }},
}};

bool Compare(std::string_view condition, WordReader& reader) {
  const std::size_t at = condition.find_first_of("<>=!");
  if (at == std::string_view::npos) return false;
  std::size_t length = 1;
  if (at + 1 < condition.size() &&
      std::string_view("=<>").find(condition[at + 1]) != std::string_view::npos) {
    length = 2;
  }
  const auto side = [&](std::string_view text) {
    const WordValue value = reader.Value("CMP" + std::string(text), "CMP");
    return value.Found ? value.Value : 0;
  };
  const double left = side(condition.substr(0, at));
  const double right = side(condition.substr(at + length));
  for (const Comparison& row : Comparisons) {
    if (row.Text == condition.substr(at, length)) return row.Holds(left, right);
  }
  return false;
}

}  // namespace

Decision Decide(const Block& block, WordReader& reader) {
  const bool jumps = block.Has(Word::Goto);
  if (!jumps && !block.Has(Word::Abort)) return Decision::GoOn;
  const std::string_view text = block.Text();
  const std::size_t from = text.find("IF") + 2;
  const std::size_t to = text.find(jumps ? "GOTO" : "ABORT");
  if (to < from || !Compare(text.substr(from, to - from), reader)) return Decision::GoOn;
  return jumps ? Decision::Jump : Decision::Leave;
}

}  // namespace torvane::partprogram
