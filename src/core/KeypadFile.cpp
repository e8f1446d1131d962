#include "core/KeypadFile.h"

#include <optional>

#include "core/ConfigText.h"
#include "core/General.h"
#include "core/LastFile.h"

namespace torvane::core {

namespace {

constexpr std::size_t CaptionLength = 24;
constexpr std::size_t VariableLength = 12;

/// The fields of the file up to its marker. Asked for more than there are, it has failed, and the
/// entry in hand is not whole.
class KeypadReader {
 public:
  explicit KeypadReader(std::string_view text) : fields_(text) {}

  [[nodiscard]] bool Failed() const { return failed_; }

  std::string_view Text() {
    if (failed_) return {};
    const auto field = fields_.Next();
    failed_ = !field || Trim(*field) == EndMarker;
    return failed_ ? std::string_view() : Trim(*field);
  }
  std::string Text(std::size_t length) { return std::string(Trim(Text().substr(0, length))); }
  std::int16_t Number() { return TruncateToInt16(LeadingNumber(Text())); }

  void SkipLine() { fields_.SkipLine(); }

 private:
  FieldReader fields_;
  bool failed_ = false;
};

KeypadEntry ReadEntry(KeypadReader& reader, bool latching) {
  KeypadEntry entry;
  entry.Latching = latching;
  entry.StateMask = reader.Number();
  entry.CaptionOff = reader.Text(CaptionLength);
  entry.CaptionOn = latching ? reader.Text(CaptionLength) : entry.CaptionOff;
  entry.Variable = reader.Text(VariableLength);
  entry.ValueOn = reader.Number();
  entry.ValueOff = latching ? reader.Number() : entry.ValueOn;
  entry.Active = !entry.Variable.empty();
  return entry;
}

}  // namespace

void ReadKeypadFile(std::string_view text, KeypadTable& keys) {
  keys.fill({});
  for (KeypadReader reader(text); !reader.Failed();) {
    const std::int16_t key = reader.Number();
    if (reader.Failed()) return;
    if (key < 1 || key > KeypadKeys) {
      reader.SkipLine();
      continue;
    }
    const std::string type = UpperCase(reader.Text().substr(0, 1));
    if (reader.Failed()) return;
    if (type != "M" && type != "L") {
      reader.SkipLine();
      continue;
    }
    const KeypadEntry entry = ReadEntry(reader, type == "L");
    if (!reader.Failed()) keys[static_cast<std::size_t>(key - 1)] = entry;
  }
}

void LoadKeypadFile(platform::FileSystem& files, const DirectorySet& directories,
                    KeypadTable& keys) {
  keys.fill({});
  const std::string path = directories.RootDirectory + "Keypad.cfg";
  NoteLastFile(files, directories, path);
  ReadKeypadFile(files.ReadFile(path), keys);
}

}  // namespace torvane::core
