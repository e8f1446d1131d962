#include "core/LaserFile.h"

#include "core/ConfigText.h"
#include "core/General.h"

namespace torvane::core {

namespace {

std::int16_t CheckedNameIndex(std::int16_t index, const LaserNameList& names) {
  const auto count = static_cast<std::int64_t>(names.size());
  if (index >= 1 && index < count) return index;
  return count > 1 ? 1 : 0;
}

}  // namespace

void ReadLaserFile(std::string_view text, const LaserNameList& names, LaserSetting& setting) {
  const auto title = text.find_first_of("\r\n");
  FieldReader fields(title == std::string_view::npos ? std::string_view() : text.substr(title));
  fields.Next();  // what is left of the title line: its end
  const auto number = [&fields] { return LeadingNumber(fields.Next().value_or("")); };
  for (auto& value : setting.Integers) value = TruncateToInt16(number());
  for (auto& value : setting.Floats) value = ToSingle(number());
  setting.Integer7 = TruncateToInt16(number());
  for (auto& value : setting.MoreFloats) value = ToSingle(number());
  setting.NameIndex = CheckedNameIndex(TruncateToInt16(number()), names);
}

}  // namespace torvane::core
