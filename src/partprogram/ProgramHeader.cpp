#include "partprogram/ProgramHeader.h"

#include <cmath>
#include <vector>

#include "core/General.h"

namespace torvane::partprogram {
namespace {

/// No sheet is wider and no clamp lies farther out, mm or inches.
constexpr double LargestNumber = 1e9;

struct SheetForm {
  std::string_view X;
  std::string_view Y;
};

/// The third reads the number between the colon and the "X".
constexpr std::array<SheetForm, 3> SheetForms = {{{"X", "Y"}, {"X=", "Y="}, {":", "X"}}};

struct ClampForm {
  std::int16_t Clamps;  ///< clamp count that knows the form; 2 stands for every other count
  std::array<std::string_view, 4> Keys;
};

constexpr std::array<ClampForm, 13> ClampForms = {{
    {2, {"L", "R"}},
    {2, {"L=", "R="}},
    {2, {"A", "B"}},
    {2, {"A=", "B="}},
    {2, {"1=", "2="}},
    {3, {"L", "M", "R"}},
    {3, {"L=", "M=", "R="}},
    {3, {"A", "B", "C"}},
    {3, {"A=", "B=", "C="}},
    {3, {"1=", "2=", "3="}},
    {4, {"A", "B", "C", "D"}},
    {4, {"A=", "B=", "C=", "D="}},
    {4, {"1=", "2=", "3=", "4="}},
}};

/// -999 where there is no number, 0 where it is none that a machine could mean.
double NumberBehind(std::string_view text, std::string_view key) {
  const double value = core::GetPlainValue(text, key).Value;
  return std::abs(value) <= LargestNumber ? value : 0;
}

/// From the colon to the right of `keyword` on; empty without the statement.
std::string_view Statement(std::string_view text, std::string_view keyword) {
  const auto at = text.find(keyword);
  if (at == std::string_view::npos) return {};
  const auto colon = text.find(':', at);
  return colon == std::string_view::npos ? std::string_view{} : text.substr(colon);
}

void ReadSheet(std::string_view statement, ProgramHeader& header) {
  for (const SheetForm& form : SheetForms) {
    if (header.SheetX > 0 && header.SheetY > 0) return;
    header.SheetX = NumberBehind(statement, form.X);
    header.SheetY = NumberBehind(statement, form.Y);
    if (!(header.SheetX > 0 && header.SheetY > 0)) header.SheetX = header.SheetY = 0;
  }
}

void ReadClamps(std::string_view statement, std::int16_t clampCount, ProgramHeader& header) {
  auto& clamps = header.Clamps;
  const auto missing = [&] { return clamps[0] <= 0 || clamps[1] <= 0; };
  const std::int16_t forms = clampCount == 3 || clampCount == 4 ? clampCount : std::int16_t{2};
  for (const ClampForm& form : ClampForms) {
    if (form.Clamps != forms || !missing()) continue;
    const auto first = statement.find(form.Keys[0]);
    const auto second = statement.find(form.Keys[1]);
    if (first == std::string_view::npos || second == std::string_view::npos || first > second) {
      continue;
    }
    for (std::size_t i = 0; i < clamps.size(); ++i) {
      if (!form.Keys[i].empty()) clamps[i] = NumberBehind(statement, form.Keys[i]);
    }
  }
  if (missing()) clamps.fill(0);
}

}  // namespace

void ReadHeaderComment(std::string_view comment, std::int16_t clampCount, ProgramHeader& header) {
  const std::string upper = core::UpperCase(comment);
  if (const auto material = Statement(upper, "MATERIAL");
      !material.empty() && header.Material.empty()) {
    header.Material = core::Trim(comment.substr(comment.size() - material.size() + 1));
  }
  if (const auto sheet = Statement(upper, "SHEET"); !sheet.empty()) ReadSheet(sheet, header);
  if (const auto clamps = Statement(upper, "CLAMP"); !clamps.empty()) {
    ReadClamps(clamps, clampCount, header);
  }
}

ProgramHeader ReadProgramHeader(std::span<const std::string_view> lines, std::int16_t clampCount) {
  ProgramHeader header;
  for (const std::string_view line : lines) {
    const std::string_view text = core::Trim(line);
    if (text.empty()) continue;
    if (text.find('!') == std::string_view::npos) break;
    ReadHeaderComment(core::CommentPart(text), clampCount, header);
  }
  return header;
}

std::string MaterialText(const ProgramHeader& header) { return "Material :  " + header.Material; }

std::string SheetText(const ProgramHeader& header) {
  return "Sheet Size :  " + core::NumberText(static_cast<float>(header.SheetX), -1) + "x" +
         core::NumberText(static_cast<float>(header.SheetY), -1);
}

std::string ClampText(const ProgramHeader& header) {
  std::size_t count = 0;
  while (count < header.Clamps.size() && header.Clamps[count] > 0) ++count;
  const bool list = count == 3 || count == 4;
  if (!list) count = 2;
  std::string text = "Clamps :  ";
  for (std::size_t i = 0; i < count; ++i) {
    if (i > 0) text += list ? ", " : " & ";
    text += core::NumberText(static_cast<float>(header.Clamps[i]), -1);
  }
  return text;
}

}  // namespace torvane::partprogram
