// The one grid and the one type scale, in pixels of the desk's size.
#pragma once

namespace torvane::toolkit {

/// The steps of the type scale. Bold, Key, Title and Strong are bold; Mono has characters of one
/// width; Readout, Figure and Position have figures of one width, so that they do not dance.
enum class TypeStyle {
  Small,
  Body,
  Bold,
  Key,
  Title,
  Entry,
  Strong,  ///< of Entry's size
  Mono,    ///< of Entry's size, for the text of programs
  Readout,
  Figure,
  Position,  ///< read from two metres
  Count
};

/// Drawn for a desk of 1280 by 960 or more, grid 8, and scaled from there; keys never are lower
/// than 56 pixels. Screens lay themselves out from these and nothing else.
struct Metrics {
  double Scale = 1;
  int DeskWidth = 1280;
  int DeskHeight = 1024;
  int Gap = 8;            ///< between neighbours
  int Margin = 24;        ///< inside a panel
  int KeyHeight = 72;     ///< an ordinary key
  int PadKeyHeight = 60;  ///< a key of the pads
  int KeyWidth = 152;     ///< an ordinary key of a form
  int TitleHeight = 48;
  int EntryHeight = 56;
  int LineHeight = 28;   ///< a line of Body text, a row of a list
  int TextStrip = 34;    ///< the text lines of the main screen
  int Hairline = 1;      ///< rims and frames
  int Edge = 3;          ///< light and dark edge of a key
  int Ring = 3;          ///< focus ring and ring of a key that is down
  int Corner = 4;        ///< radius of corners
  int ScrollWidth = 56;  ///< a scroll bar that a finger hits

  /// The metrics of a desk, 1024 by 768 and up.
  [[nodiscard]] static Metrics For(int width, int height);

  /// `base` (pixels of the drawing) on this desk.
  [[nodiscard]] int Px(double base) const;

  /// The height of a key drawn so high: never lower than a finger needs.
  [[nodiscard]] int KeyOf(double base) const;

  /// Height of a type style's capitals and line, in pixels of the font.
  [[nodiscard]] int TypeSize(TypeStyle style) const;

  bool operator==(const Metrics&) const = default;
};

}  // namespace torvane::toolkit
