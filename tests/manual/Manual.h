// The manual's source, line by line, with what it quotes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace torvane::tests {

/// A line of docs/manual and the section that it is in.
struct ManualLine {
  std::string File;  ///< "operator.adoc"
  int Number = 0;    ///< from 1
  std::string Text;
  std::string Heading;  ///< of the section, without its signs; empty before the first
  std::string Id;       ///< of the section, empty where it has none
};

/// Something that is marked up as a quotation of the program.
struct Quote {
  std::string Text;
  ManualLine Line;

  /// "docs/manual/operator.adoc:12".
  [[nodiscard]] std::string Where() const;
};

/// All lines of all sources, file after file.
[[nodiscard]] const std::vector<ManualLine>& ManualLines();

/// The quotations of a role: "[.message]#Disc Not Ready !#" is one of the role "message". The roles
/// "btn" and "kbd" are the macros of these names. Comments are passed over.
[[nodiscard]] std::vector<Quote> Quotes(std::string_view role);

/// The quotations of a line, in their order.
[[nodiscard]] std::vector<std::string> QuotesIn(std::string_view text, std::string_view role);

/// True when one of the quotations has that text.
[[nodiscard]] bool Quoted(const std::vector<Quote>& quotes, std::string_view text);

/// The parts of a text between those that it leaves open: "Delete ", " !" for `Delete "<name>" !`
/// without the quotation marks around it. An open part is <in angle brackets> or a "*".
[[nodiscard]] std::vector<std::string> FixedParts(const std::string& text);

/// Blanks and line feeds in a row are one blank, none at the ends.
[[nodiscard]] std::string Squeezed(std::string_view text);

}  // namespace torvane::tests
