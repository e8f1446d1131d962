#include "core/ColourTable.h"

namespace torvane::core {

const std::array<ColourEntry, static_cast<std::size_t>(ColourName::Count)> ColourEntries = {{
    {"Plot Background", 0x400000},
    {"Punching Zones", 0x00C000},
    {"Sheet Boundry", 0x3F3F3F},
    {"Sheet Fill", 0x808080},
    {"Datum Marker", 0x3F3F3F},
    {"Block Skip 1", 0xFFFF00},
    {"Block Skip 2", 0xFFFF00},
    {"Background Profiling G40", 0xFFFF00},
    {"Background Profiling G41", 0x00FF00},
    {"Background Profiling G42", 0xFF00FF},
    {"Background Profiling Blended", 0xFFFFFF},
    {"Profiler Movement Icon", 0x0000FF},
    {"Real Time Profiling", 0x00FFFF},
    {"Real Time Movement", 0x000000},
    {"Highlighted Drawing", 0x0000FF},
    {"Plot Cursor", 0x0000FF},
    {"Header Background", 0xC7BE98},
    {"Header Text", 0x000000},
    {"Panel Background", 0xC7BE98},
    {"Panel Text", 0x000000},
    {"Bold Panel Text", 0x0000FF},
    {"General Buttons", 0xC08000},
    {"General Button Text", 0x000000},
    {"Reference Buttons", 0x00C000},
    {"Reference Button Text", 0x000000},
    {"Ok Message Button", 0x00C000},
    {"Ok Message Button Text", 0x000000},
    {"Warning Message Button", 0x00FFFF},
    {"Warning Message Button Text", 0x000000},
    {"Critical Message Button", 0x0000FF},
    {"Critical Message Button Text", 0x000000},
    {"Main Keys", 0xFFFF00},
    {"Main Key Text", 0x000000},
    {"Sub Keys", 0xFFB824},
    {"Sub Key Text", 0x000000},
    {"Text Background", 0x400000},
    {"Text", 0x00FFFF},
    {"XY Background", 0x400000},
    {"XY Headers", 0x00C000},
    {"XY Position", 0x00FFFF},
    {"Status Background", 0x400000},
    {"Status Position Text", 0x00C000},
    {"Status Feed Text", 0x00FFFF},
}};

ColourTable::ColourTable() {
  for (std::size_t entry = 0; entry < values_.size(); ++entry) {
    values_[entry] = ColourEntries[entry].Default;
  }
}

}  // namespace torvane::core
