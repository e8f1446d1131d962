// What the manual quotes is what the program says: captions, titles, messages, keys, files,
// variables, figures, pictures, places. And what the program can say is in the manual.
#include <algorithm>
#include <filesystem>
#include <map>
#include <regex>
#include <set>

#include <gtest/gtest.h>

#include "Manual.h"
#include "SourceTexts.h"
#include "console/ScreenTable.h"
#include "core/ColourTable.h"
#include "core/RunFigures.h"
#include "files/DirectoryActions.h"
#include "files/ProgramActions.h"
#include "partprogram/TableModule.h"
#include "partprogram/TableRows.h"
#include "platform/RuntimeFault.h"
#include "supervision/CycleRules.h"
#include "support/SourceTree.h"
#include "tools/KeyScript.h"

namespace torvane::tests {
namespace {

namespace fs = std::filesystem;

/// True when a text of the program holds `part`.
bool Held(const std::vector<SourceText>& texts, const std::string& part) {
  return std::any_of(texts.begin(), texts.end(), [&](const SourceText& text) {
    return Squeezed(text.Text).find(Squeezed(part)) != std::string::npos;
  });
}

std::set<std::string> Titles() {
  std::set<std::string> titles;
  for (const auto& row : console::ScreenTable()) titles.insert(Squeezed(row.Traits.Title));
  for (const auto& row : files::ProgramActionRows) titles.insert(row.Title);
  for (const auto& row : files::DirectoryActionRows) titles.insert(row.Title);
  titles.erase("");
  return titles;
}

TEST(ManualQuotes, ScreensByTheirTitles) {
  const auto titles = Titles();
  const auto quotes = Quotes("screen");
  for (const Quote& quote : quotes)
    EXPECT_TRUE(titles.count(quote.Text))
        << quote.Where() << ": no screen has the title \"" << quote.Text << "\"";
  for (const std::string& title : titles)
    EXPECT_TRUE(Quoted(quotes, title) || Quoted(Quotes("caption"), title))
        << "docs/manual/operator.adoc says nothing of the screen \"" << title
        << "\": tell its task, with [.screen]#" << title << "#";
}

TEST(ManualQuotes, KeysThatThereAre) {
  for (const Quote& quote : Quotes("kbd")) {
    std::string name = quote.Text;
    std::erase(name, ' ');
    EXPECT_TRUE(tools::StrokeNamed(name)) << quote.Where() << ": no key " << quote.Text;
  }
}

/// A task waits for the warning that it tells; then it has been seen.
bool SeenInATask(const std::string& message) {
  return std::any_of(ManualLines().begin(), ManualLines().end(), [&](const ManualLine& line) {
    return line.Text.starts_with("//> wait-warning ") &&
           line.Text.find(message) != std::string::npos;
  });
}

TEST(ManualQuotes, MessagesThatTheProgramShows) {
  for (const Quote& quote : Quotes("message")) {
    const auto parts = FixedParts(quote.Text);
    const bool held = std::all_of(parts.begin(), parts.end(), [](const std::string& part) {
      return Held(TextsOfTheConsole(), part);
    });
    EXPECT_TRUE(held || SeenInATask(quote.Text))
        << quote.Where() << ": the program does not say \"" << quote.Text << "\"";
  }
}

/// Lines that end as the console's warnings and questions do.
std::vector<SourceText> Warnings() {
  std::vector<SourceText> warnings;
  const std::regex pattern(R"([^\n]*[A-Za-z]{3}[^\n]* [!?](?=\n|$))");
  for (const SourceText& text : TextsOfTheConsole()) {
    if (text.File.starts_with("src/toolkit") || text.File.starts_with("src/platform")) continue;
    for (std::sregex_iterator it(text.Text.begin(), text.Text.end(), pattern), end; it != end; ++it)
      warnings.push_back({Squeezed(it->str()), text.File});
  }
  for (const auto& rule : supervision::CycleRules())
    warnings.push_back({rule.FirstLine, "src/supervision/CycleRules.cpp"});
  for (const SourceText& text : TextsOf("partprogram/ErrorMessages.h"))
    warnings.push_back({Squeezed(text.Text), text.File});
  // The notes of the restart screen end with no sign of their own.
  for (const SourceText& text : TextsOf("restart/Rehearsal.cpp"))
    if (!text.Text.empty()) warnings.push_back({Squeezed(text.Text), text.File});
  return warnings;
}

TEST(ManualCompleteness, EveryMessageIsExplained) {
  std::vector<Quote> quotes = Quotes("message");
  for (Quote& quote : Quotes("caption")) quotes.push_back(std::move(quote));
  int count = 0;
  for (const SourceText& warning : Warnings()) {
    ++count;
    const bool told = std::any_of(quotes.begin(), quotes.end(), [&](const Quote& quote) {
      return quote.Text.find(warning.Text) != std::string::npos ||
             (warning.Text.front() == '"' &&
              quote.Text.find(warning.Text.substr(1)) != std::string::npos);
    });
    EXPECT_TRUE(told) << "docs/manual/messages.adoc does not explain \"" << warning.Text << "\" ("
                      << warning.File << "): add a row | [.message]#" << warning.Text
                      << "# | what it means and what to do";
  }
  EXPECT_GT(count, 50);
}

// ---- files ----

std::string LastPart(std::string path) {
  while (!path.empty() && (path.back() == '\\' || path.back() == '/')) path.pop_back();
  const auto cut = path.find_last_of("\\/");
  return cut == std::string::npos ? path : path.substr(cut + 1);
}

std::set<std::string> ExampleFiles() {
  std::set<std::string> names;
  for (const auto& file :
       fs::recursive_directory_iterator(SourceTree() / "examples" / "installation"))
    names.insert(file.path().filename().string());
  return names;
}

TEST(ManualQuotes, FilesThatTheProgramKnows) {
  const auto examples = ExampleFiles();
  const auto texts = TextsOfTheConsole();
  for (const Quote& quote : Quotes("file")) {
    const std::string name = LastPart(quote.Text);
    if (examples.count(name) != 0) continue;
    for (std::string part : FixedParts(name)) {
      if (part.front() == '.') part.erase(0, 1);
      EXPECT_TRUE(part.empty() || Held(texts, part))
          << quote.Where() << ": the program knows no file " << quote.Text;
    }
  }
}

/// A file of the program's, named whole in its code.
std::set<std::string> NamedFiles() {
  const std::regex pattern(R"(^[A-Z][A-Za-z]+\.(cfg|cms|cnc|dat|stn|msg|txt|bak|rep|tbx|tmp|hlp|)"
                           R"(lock|prg|lsr|csv|json|log)$)");
  std::set<std::string> names;
  for (const SourceText& text : TextsOfTheConsole()) {
    const std::string name = LastPart(text.Text);
    if (std::regex_match(name, pattern)) names.insert(name);
  }
  return names;
}

std::vector<Quote> FilesOfTheOwner() {
  std::vector<Quote> quotes;
  for (Quote& quote : Quotes("file")) {
    quote.Text = LastPart(quote.Text);
    if (quote.Line.File == "owner.adoc") quotes.push_back(std::move(quote));
  }
  return quotes;
}

TEST(ManualCompleteness, EveryFileHasItsPlaceInTheOwnersPart) {
  const auto owner = FilesOfTheOwner();
  std::set<std::string> wanted = NamedFiles();
  for (const auto& file :
       fs::recursive_directory_iterator(SourceTree() / "examples" / "installation")) {
    if (!file.is_regular_file()) continue;
    const std::string name = file.path().filename().string();
    const std::string ending = "*" + file.path().extension().string();
    // One of many is told by its ending.
    if (!Quoted(owner, ending)) wanted.insert(name);
  }
  EXPECT_GT(wanted.size(), 20U);
  for (const std::string& name : wanted)
    EXPECT_TRUE(Quoted(owner, name)) << "docs/manual/owner.adoc has no section for " << name
                                     << ": add it, with [.file]#" << name << "#";
}

TEST(ManualCompleteness, EveryFileOfASlotIsTold) {
  const auto owner = FilesOfTheOwner();
  int count = 0;
  const std::regex pattern("^[a-z]{3}$");
  for (const SourceText& text : TextsOf("core/SlotFiles.h")) {
    if (!std::regex_match(text.Text, pattern)) continue;
    ++count;
    EXPECT_TRUE(Quoted(owner, "Actvprg<n>." + text.Text))
        << "docs/manual/owner.adoc does not tell Actvprg<n>." << text.Text;
  }
  EXPECT_GE(count, 12);
}

/// The lines of Colour.cfg, in the order of the file.
TEST(ManualCompleteness, TheColoursAreThoseOfTheFile) {
  std::vector<std::string> told;
  for (const Quote& quote : Quotes("colour")) told.push_back(quote.Text);
  std::vector<std::string> known;
  for (const auto& entry : core::ColourEntries) known.emplace_back(entry.Label);
  EXPECT_EQ(told, known) << "docs/manual/owner.adoc, section Colour.cfg";
}

// ---- the controller's variables ----

TEST(ManualQuotes, VariablesOfTheContract) {
  const auto texts = TextsOf("link/Variables.h");
  for (const Quote& quote : Quotes("variable"))
    EXPECT_TRUE(Held(texts, quote.Text))
        << quote.Where() << ": the console knows no variable " << quote.Text;
}

TEST(ManualCompleteness, EveryVariableAndCommandWordIsTold) {
  std::vector<Quote> told;
  for (Quote& quote : Quotes("variable"))
    if (quote.Line.File == "integrator.adoc") told.push_back(std::move(quote));
  const std::regex variable(R"(VR\(\d+\)|M8\d\d|[A-Z]+ AXIS\(\d\))");
  std::set<std::string> wanted;
  for (const SourceText& text : TextsOf("link/Variables.h")) {
    for (std::sregex_iterator it(text.Text.begin(), text.Text.end(), variable), end; it != end;
         ++it)
      wanted.insert(it->str());
    if (text.Text.starts_with("VR(48)=")) wanted.insert(text.Text);
  }
  EXPECT_GT(wanted.size(), 60U);
  for (const std::string& name : wanted)
    EXPECT_TRUE(Quoted(told, name)) << "docs/manual/integrator.adoc does not tell " << name
                                    << ": add a row | [.variable]#" << name << "#";
}

// ---- figures ----

/// "// src/core/LinkSettings.h PollPeriodMs" above ":poll-period: 50".
struct Figure {
  std::string Name;
  std::string Value;
  std::string File;
  std::string Constant;
};

std::vector<Figure> Figures() {
  const std::regex source(R"(^// (src/\S+) (\w+)$)");
  const std::regex value(R"(^:([a-z-]+): (\S+)$)");
  std::vector<Figure> figures;
  std::smatch place;
  std::string last;
  for (const ManualLine& line : ManualLines()) {
    if (line.File != "values.adoc") continue;
    std::smatch found;
    if (std::regex_match(line.Text, found, value)) {
      EXPECT_TRUE(std::regex_match(last, place, source))
          << "docs/manual/values.adoc:" << line.Number << ": no constant above " << line.Text;
      figures.push_back({found[1], found[2], place[1], place[2]});
    }
    last = line.Text;
  }
  return figures;
}

TEST(ManualFigures, AreThoseOfTheCode) {
  const auto figures = Figures();
  EXPECT_GT(figures.size(), 20U);
  for (const Figure& figure : figures) {
    const std::string code = SourceFile(figure.File);
    const std::regex pattern("\\b" + figure.Constant + R"(\s*=\s*(-?[\d.']+))");
    std::smatch found;
    ASSERT_TRUE(std::regex_search(code, found, pattern))
        << figure.File << " has no " << figure.Constant << " any more";
    std::string number = found[1];
    std::erase(number, '\'');
    EXPECT_EQ(std::stod(number), std::stod(figure.Value))
        << "docs/manual/values.adoc: " << figure.Name << " is " << number << " in " << figure.File;
  }
}

TEST(ManualFigures, AreQuotedByTheirNames) {
  std::string text;
  for (const ManualLine& line : ManualLines()) text += line.Text + "\n";
  std::set<std::string> known;
  for (const Figure& figure : Figures()) {
    known.insert(figure.Name);
    EXPECT_NE(text.find("{" + figure.Name + "}"), std::string::npos)
        << figure.Name << " is not quoted anywhere";
  }
  const std::regex quote(R"(\{([a-z]+(?:-[a-z]+)*)\})");
  for (std::sregex_iterator it(text.begin(), text.end(), quote), end; it != end; ++it)
    EXPECT_TRUE(known.count((*it)[1])) << "docs/manual/values.adoc has no " << (*it)[1];
}

// ---- the figures of a machine ----

/// True for a line of a file of --machine that is taken.
bool IsFigure(const std::string& name, double value) {
  try {
    static_cast<void>(core::ReadRunFigures(name + " : " + std::to_string(value), "machine.txt"));
    return true;
  } catch (const platform::RuntimeFault&) {
    return false;
  }
}

/// "| `Clamp Time` | clamps opened or closed, s | 1 | 0 to 3600": the name and its range.
TEST(ManualFigures, OfAMachineAreToldWithTheirRanges) {
  std::set<std::string> told;
  const std::regex row(R"(^\| (`[A-Z].*`) \| .* \| [\d.]+ \| (-?\d+) to (\d+)$)");
  const std::regex named("`([^`]+)`");
  for (const ManualLine& line : ManualLines()) {
    std::smatch found;
    if (line.File != "programs.adoc" || !std::regex_match(line.Text, found, row)) continue;
    const std::string names = found[1];
    const double low = std::stod(found[2]);
    const double high = std::stod(found[3]);
    for (std::sregex_iterator it(names.begin(), names.end(), named), end; it != end; ++it) {
      const std::string name = (*it)[1];
      told.insert(name);
      EXPECT_TRUE(IsFigure(name, low) && IsFigure(name, high)) << line.Text;
      EXPECT_FALSE(IsFigure(name, low - 1) || IsFigure(name, high + 1)) << line.Text;
    }
  }
  const std::regex figure("[A-Z][a-z]+ [A-Z][a-z]*");
  for (const SourceText& text : TextsOf("core/RunFigures.cpp")) {
    if (!std::regex_match(text.Text, figure)) continue;
    EXPECT_TRUE(told.count(text.Text))
        << "docs/manual/programs.adoc does not tell the figure " << text.Text << " of --machine";
  }
  EXPECT_EQ(told.size(), 9U);
}

// ---- the ring of a slot ----

/// Indices of the rows of a table of moves and then arcs, which are the longest rows.
std::vector<std::pair<int, int>> RowsOfArcs(std::size_t moves, std::size_t arcs) {
  namespace RecordCode = partprogram::RecordCode;
  std::vector<partprogram::DrawRecord> records(1 + moves + arcs);
  for (std::size_t i = 1; i < records.size(); ++i)
    records[i].Code = i <= moves ? RecordCode::Move : RecordCode::ArcProfile;
  const std::string text = partprogram::MakeTables(1, records).Text;
  std::vector<std::pair<int, int>> rows;
  const std::regex line(R"(TABLE\((\d+)((?:,[^,)]+)+)\))");
  for (std::sregex_iterator it(text.begin(), text.end(), line), end; it != end; ++it) {
    const std::string values = (*it)[2];
    const auto count = std::count(values.begin(), values.end(), ',');
    rows.emplace_back(std::stoi((*it)[1]), static_cast<int>(count));
  }
  return rows;
}

/// How many rows from `first` on go over none of each other.
int WholeFrom(const std::vector<std::pair<int, int>>& rows, std::size_t first) {
  std::set<int> taken;
  for (std::size_t row = first; row < rows.size(); ++row) {
    for (int i = 0; i < rows[row].second; ++i)
      if (!taken.insert(rows[row].first + i).second) return static_cast<int>(row - first);
  }
  return static_cast<int>(partprogram::LongestRow * 1000);
}

/// "never above 25" of a line of Trio.cfg.
int HighestTold(int number) {
  const std::regex limit("^\\| " + std::to_string(number) + R"( \| .*never above (\d+))");
  for (const ManualLine& line : ManualLines()) {
    std::smatch found;
    if (line.Heading == "[.file]#Trio.cfg#" && std::regex_search(line.Text, found, limit))
      return std::stoi(found[1]);
  }
  ADD_FAILURE() << "docs/manual/owner.adoc gives line " << number << " of Trio.cfg no limit";
  return 0;
}

/// The row that runs and those ahead of it: none may be written over.
TEST(ManualFigures, RowsWithinTheToldLimitsAreWholeInTheRing) {
  int whole = static_cast<int>(partprogram::LongestRow * 1000);
  for (std::size_t moves = 0; moves <= partprogram::LongestRow; ++moves) {
    const auto rows = RowsOfArcs(moves, 80);
    ASSERT_EQ(rows.size(), moves + 81);
    for (std::size_t first = 0; first < rows.size(); ++first)
      whole = std::min(whole, WholeFrom(rows, first));
  }
  EXPECT_EQ(HighestTold(8), whole);
  EXPECT_EQ(HighestTold(9) + 1, whole);
}

// ---- pictures and places ----

std::set<std::string> PicturesShown() {
  const std::regex pattern(R"(^image::([^\[]+)\[(.*)\]$)");
  std::set<std::string> shown;
  for (const ManualLine& line : ManualLines()) {
    std::smatch found;
    if (!std::regex_match(line.Text, found, pattern)) continue;
    EXPECT_FALSE(found[2].str().empty()) << found[1] << " has no words for who cannot see it";
    shown.insert(found[1]);
  }
  return shown;
}

TEST(ManualPictures, AreThere) {
  for (const std::string& name : PicturesShown())
    EXPECT_TRUE(fs::exists(SourceTree() / "docs" / "screens" / name)) << name;
}

/// What the pictures show in a dialog is what the console itself says there.
TEST(ManualPictures, ShowDialogsWithTextsOfTheConsole) {
  const std::string scenes = SourceFile("src/tools/PictureScenes.cpp");
  ASSERT_FALSE(scenes.empty());
  const std::regex call(R"re(\b(?:Warn|Confirm|Ask|Tell|\w*Warning)\(([^;]*);)re");
  for (std::sregex_iterator it(scenes.begin(), scenes.end(), call), end; it != end; ++it) {
    for (const std::string& text : LiteralsOf((*it)[1].str()))
      EXPECT_TRUE(Held(TextsOfTheConsole(), text))
          << "src/tools/PictureScenes.cpp: the console never says \"" << text << "\"";
  }
}

TEST(ManualPictures, ShowEveryScreen) {
  const auto shown = PicturesShown();
  int screens = 0;
  for (const auto& row : console::ScreenTable()) {
    const std::string name = row.Traits.Name + "-1280x1024.png";
    ++screens;
    EXPECT_TRUE(shown.count(name))
        << "docs/manual shows no picture of " << row.Traits.Name << ": run tools/screenshots, and "
        << "put image::" << name << "[words] into its section of operator.adoc";
  }
  EXPECT_GT(screens, 25);
  for (const auto& file : fs::directory_iterator(SourceTree() / "docs" / "screens"))
    EXPECT_TRUE(shown.count(file.path().filename().string()))
        << file.path().filename() << " is in docs/screens and not in the manual";
}

TEST(ManualPlaces, ThatAreReferredToAreThere) {
  std::set<std::string> ids;
  for (const ManualLine& line : ManualLines())
    if (!line.Id.empty()) ids.insert(line.Id);
  const std::regex pattern(R"(<<([a-z0-9-]+)(?:,[^>]*)?>>)");
  int count = 0;
  for (const ManualLine& line : ManualLines()) {
    for (std::sregex_iterator it(line.Text.begin(), line.Text.end(), pattern), end; it != end;
         ++it, ++count)
      EXPECT_TRUE(ids.count((*it)[1])) << "docs/manual/" << line.File << ":" << line.Number
                                       << ": no section [#" << (*it)[1] << "]";
  }
  EXPECT_GT(count, 10);
}

}  // namespace
}  // namespace torvane::tests
