#include "console/EntryMode.h"

#include <array>

namespace torvane::console {

namespace {

constexpr std::string_view NameSymbols = "!#$%&()+-.=_";
constexpr int NoLimit = -1;

/// One row of the table of modes.
struct ModeRule {
  int Mode;
  std::string_view Symbols;      ///< accepted beside digits and letters
  std::string_view MoreSymbols;  ///< and these
  bool Letters;
  bool InnerSpace;  ///< a space, unless it would stand first
  int Limit;
};

constexpr std::array<ModeRule, 9> ModeRules = {{
    {EntryMode::Digits, "", "", false, false, NoLimit},
    {EntryMode::SignedDigits, "-", "", false, false, NoLimit},
    {EntryMode::Decimal, ".", "", false, false, NoLimit},
    {EntryMode::SignedDecimal, "-.", "", false, false, NoLimit},
    {EntryMode::Arithmetic, "()*+-./", "", false, false, NoLimit},
    {EntryMode::ShortName, "-_", "", true, false, 8},
    {EntryMode::Name, NameSymbols, "", true, true, 32},
    {EntryMode::LongName, NameSymbols, "", true, true, 36},
    {EntryMode::SearchName, NameSymbols, "*?", true, true, 36},
}};

/// A mode from 1 up: a program line of at most that many characters.
constexpr ModeRule LineRule(int limit) { return {limit, NameSymbols, ";", true, true, limit}; }

bool IsDigit(int key) { return key >= '0' && key <= '9'; }
bool IsLetter(int key) { return (key >= 'A' && key <= 'Z') || (key >= 'a' && key <= 'z'); }

bool InSet(const ModeRule& rule, int key) {
  if (key < 1 || key > 255) return false;
  const char character = static_cast<char>(key);
  return IsDigit(key) || (rule.Letters && IsLetter(key)) || (rule.InnerSpace && key == ' ') ||
         rule.Symbols.find(character) != std::string_view::npos ||
         rule.MoreSymbols.find(character) != std::string_view::npos;
}

bool Accepts(const ModeRule& rule, int key, std::string_view text, int selectionLength) {
  if (!InSet(rule, key)) return false;
  if (key == ' ' && text.empty()) return false;
  // A full field rejects wherever the cursor stands, unless the key replaces a selection.
  return rule.Limit == NoLimit || static_cast<int>(text.size()) < rule.Limit ||
         selectionLength != 0;
}

}  // namespace

int FilterKey(int key, int mode, std::string_view text, int selectionLength) {
  if (key == BackspaceCharacter || key == EnterCharacter) return key;
  if (mode >= 1) return Accepts(LineRule(mode), key, text, selectionLength) ? key : 0;
  for (const ModeRule& rule : ModeRules) {
    if (rule.Mode == mode) return Accepts(rule, key, text, selectionLength) ? key : 0;
  }
  return key;
}

}  // namespace torvane::console
