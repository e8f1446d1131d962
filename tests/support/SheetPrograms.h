// Part programs for tests that stop a run and go on in it: each has something that a restart may
// get wrong.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "core/General.h"

namespace torvane::tests {

/// A square with a hole, the corners sharp enough for arcs outside.
inline std::string Square(const std::string& kerf, const std::string& before = "") {
  return "! SHEET : X400 Y300\r\nN10 G71 G90\r\n" + before +
         "N20 G00 X50 Y50\r\nN30 G31 T2=3\r\nN40 " + kerf +
         "\r\nN50 G01 X60 Y60 F2000\r\nN60 G01 X160 Y60\r\nN70 G01 X160 Y120\r\n"
         "N80 G03 X140 Y140 I-20 J0\r\nN90 G01 X60 Y140\r\nN100 G01 X60 Y60\r\nN110 G40\r\n"
         "N120 G31 T2=1\r\nN130 G00 X200 Y200\r\nN140 G31 T2=3\r\nN150 G02 X200 Y200 I15 J0\r\n"
         "N160 G31 T2=1\r\nN170 M30\r\n";
}

inline const char* const Inches =
    "! SHEET : X24 Y12\r\nN10 G70 G90\r\nN20 G00 X2 Y2\r\nN30 G31 T2=3\r\nN40 G41 K0.2\r\n"
    "N50 G01 X2.5 Y2 F1500\r\nN60 G03 X2.5 Y2 I-0.5 J0\r\nN70 G40\r\nN80 G31 T2=1\r\n"
    "N90 M30\r\n";

/// A lug that is called turned by 0 and by 30 degrees, itself calling a hole; and a file call.
inline const char* const Lugs =
    "! SHEET : X600 Y400\r\nN10 G71 G90\r\nN20 G00 X100 Y100\r\nN30 G98 S1 A0\r\n"
    "N40 G00 X300 Y100\r\nN50 G98 S1 A30\r\nN60 G00 X100 Y300\r\nN70 Q2\r\nN80 G00 X300 Y300\r\n"
    "N90 Q2\r\nN100 M30\r\n\r\nS1\r\nG90\r\nG00 X-20 Y-10\r\nG31 T2=3\r\nG41 K0.15\r\n"
    "G01 X20 Y-10 F1800\r\nG02 X20 Y10 I0 J10\r\nG01 X-20 Y10\r\nG01 X-20 Y-10\r\nG40\r\n"
    "G31 T2=1\r\nG98 S2 A0\r\nM02\r\n\r\nS2\r\nG91\r\nG00 X0 Y0 Z0\r\nG31 T2=3\r\n"
    "G01 X4 Y0 Z0\r\nG03 X0 Y0 Z0 I-4 J0\r\nG31 T2=1\r\nG90\r\nM02\r\n";

/// Three laps of the same lines, each farther to the right.
inline const char* const LapsThatDiffer =
    "! SHEET : X600 Y200\r\nN10 G71 G90\r\nN20 P1=20\r\nN30 G00 XP1 Y20\r\nN40 G31 T2=3\r\n"
    "N50 G01 XP1+40 Y20 F2000\r\nN60 G01 XP1+40 Y60\r\nN70 G03 XP1 Y60 I-20 J0\r\n"
    "N80 G01 XP1 Y20\r\nN90 G31 T2=1\r\nN100 P1=P1+80\r\nN110 IF P1<250 GOTO 30\r\nN120 M30\r\n";

/// Three laps over the same path: only the line that was reached tells them apart.
inline const char* const LapsAlike =
    "! SHEET : X600 Y200\r\nN10 G71 G90\r\nN20 P1=0\r\nN30 G00 X20 Y20\r\nN40 G31 T2=3\r\n"
    "N50 G01 X60 Y20 F2000\r\nN60 G01 X60 Y60\r\nN70 G01 X20 Y20\r\nN80 G31 T2=1\r\n"
    "N90 P1=P1+1\r\nN100 IF P1<3 GOTO 30\r\nN110 M30\r\n";

/// Test pieces that the switches leave out, in front of and after the contour.
inline const char* const WithSkips =
    "! SHEET : X600 Y200\r\nN10 G71 G90\r\nN20 G00 X10 Y10\r\nN30 G31 T2=3\r\n"
    "N40 G01 X40 Y10 F2000\r\n/N50 G01 X40 Y30\r\n//N60 G01 X10 Y30\r\nN70 G01 X70 Y30\r\n"
    "/N80 G01 X70 Y50\r\nN90 G01 X100 Y50\r\nN100 G31 T2=1\r\nN110 M30\r\n";

/// The program without its block numbers, but for the lines that begin with one of `kept`.
inline std::string WithoutNumbers(std::string_view program,
                                  const std::vector<std::string_view>& kept = {}) {
  std::string stripped;
  for (const std::string_view line : core::SplitLines(program)) {
    const bool keeps = std::any_of(kept.begin(), kept.end(),
                                   [&](std::string_view each) { return line.starts_with(each); });
    const bool numbered = line.starts_with('N') && !keeps;
    stripped.append(numbered ? line.substr(line.find(' ') + 1) : line).append("\r\n");
  }
  return stripped;
}

}  // namespace torvane::tests
