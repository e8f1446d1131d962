#include "Showcase.h"

#include <cmath>

namespace torvane::tests {

using namespace toolkit;

namespace {

constexpr const char* MainCaptions[] = {"    PROGRAM     F1",   "       LASER         F2",
                                        "    MACHINE       F3", "     STATUS        F4",
                                        "    KEYPAD     F5",    "         FILE           F6",
                                        "    GRAPHICS     F7"};

}  // namespace

MainShowcase::MainShowcase(Desk& desk)
    : Screen(desk, "FrontEnd"),
      Header(&Screen, PanelStyle::Title, "TORVANE 32"),
      PlotFrame(&Screen, PanelStyle::Sunken),
      Plot(&PlotFrame),
      Figures(&Screen, PanelStyle::Sunken),
      Text(&Screen, PanelStyle::Text, "BRACKET-40 SHOP"),
      Status(&Screen, PanelStyle::Text),
      Messages(&Screen, "MESSAGES  F9") {
  Screen.SetBackdrop(true);
  Screen.SetColours(shades::Plot, shades::Yellow);
  Header.SetColours(shades::Header, shades::Black);
  for (Panel* panel : {&PlotFrame, &Figures, &Text, &Status}) {
    panel->SetColours(shades::Plot, shades::Yellow);
  }
  const char* names[] = {"X", "Y", "Z", "F"};
  const char* values[] = {"1248.3", "-612.7", "0.0", "3000"};
  for (int i = 0; i < 4; ++i) {
    const toolkit::Colour ink = i == 3 ? shades::Yellow : shades::Green;
    Names.emplace_back(&Figures, names[i], TypeStyle::Entry).SetColours(shades::Plot, ink);
    Values.emplace_back(&Figures, values[i], TypeStyle::Figure, Alignment::Right)
        .SetColours(shades::Plot, ink);
  }
  for (const char* caption : MainCaptions) {
    Keys.emplace_back(&Screen, caption).SetColours(shades::Keys, shades::Black);
  }
  Keys.emplace_back(&Screen, " SHUTDOWN   F12").SetColours(shades::Keys, shades::Black);
  Slots.emplace_back(&Screen, "BRACKET-40   F10").SetColours(shades::Keys, shades::Black);
  Slots.emplace_back(&Screen, "PROGRAM 2   F11").SetColours(shades::Keys, shades::Black);
  Slots[0].SetDown(true, Events::Silent);
  Messages.SetColours(shades::Green, shades::Black);
  Plot.Canvas().SetBackground(shades::Plot);
  Plot.OnRedraw([this] { Draw(); });
  Screen.OnLayout([this](const Metrics& m) { Layout(m); });
}

void MainShowcase::Layout(const Metrics& m) {
  Area rest = Screen.Inside();
  Header.Place(TakeTop(rest, m.Px(42), m.Gap));
  rest = rest.Inset(m.Gap, 0);
  (void)TakeBottom(rest, m.Gap);
  Area row = TakeBottom(rest, m.KeyHeight, m.Gap);
  Status.Place(TakeBottom(rest, m.TextStrip, m.Gap / 2));
  Text.Place(TakeBottom(rest, m.TextStrip, m.Gap));
  const Area figures = TakeRight(rest, m.Px(250), m.Gap);
  Figures.Place(figures);
  PlotFrame.Place(rest);
  Plot.Place(PlotFrame.Inside());
  Area lines = Area{0, 0, figures.Width, figures.Height}.Inset(m.Px(16));
  for (std::size_t i = 0; i < Values.size(); ++i) {
    Area line = TakeTop(lines, m.Px(76), m.Gap);
    Names[i].Place(TakeLeft(line, m.Px(30)));
    Values[i].Place(line);
  }
  const auto cells = Columns(row, 11, m.Gap - 2);
  for (std::size_t i = 0; i < 7; ++i) Keys[i].Place(cells[i]);
  Slots[0].Place(cells[7]);
  Slots[1].Place(cells[8]);
  Messages.Place(cells[9]);
  Keys[7].Place(cells[10]);
}

void MainShowcase::Draw() {
  RasterCanvas& canvas = Plot.Canvas();
  const double aspect = Plot.width() / double(Plot.height());
  canvas.Cls();
  canvas.Scale({-10, -10 + 1020 / aspect}, {1010, -10});
  canvas.FilledBox(0, 0, 1000, 500, shades::Sheet);
  canvas.Box(0, 0, 1000, 500, 0x3F3F3F);
  for (int i = 0; i < 8; ++i) {
    const double x = 60 + i * 120;
    canvas.Box(x, 60, x + 90, 200, shades::Cyan);
    canvas.Circle(x + 45, 130, 20, 0xFFFFFF);
  }
  canvas.DrawWidth(3);
  canvas.Line(0, 0, 150, 120, shades::Yellow);
  canvas.DrawWidth(1);
  canvas.DrawStyle(platform::PenStyle::Dotted);
  canvas.Line(150, 120, 300, 400, shades::Black);
  canvas.DrawStyle(platform::PenStyle::Solid);
  using platform::Overlay;
  const auto show = [&](Overlay which, double x1, double y1, double x2, double y2,
                        toolkit::Colour ink) {
    canvas.SetOverlay(which, {{x1, y1}, {x2, y2}, true, ink, 0, false});
  };
  show(Overlay::LimitRect, 20, 20, 980, 480, shades::Green);
  show(Overlay::CrossLine1, 492, 300, 508, 300, shades::Red);
  show(Overlay::CrossLine2, 500, 292, 500, 308, shades::Red);
  show(Overlay::ZoomRect, 500, 300, 700, 420, shades::Red);
  show(Overlay::IconShape, 292, 408, 308, 392, shades::Red);
  show(Overlay::IconLine1, 292, 392, 308, 408, shades::Red);
  show(Overlay::IconLine2, 292, 408, 308, 392, shades::Red);
}

ControlShowcase::ControlShowcase(Desk& desk)
    : Screen(desk, "ShowForm"),
      Title(&Screen, PanelStyle::Title, "MACHINE"),
      Body(&Screen, PanelStyle::Body),
      Plain(&Body, "REF &X"),
      Focused(&Body, "REFERENCE &ALL"),
      Disabled(&Body, "&ROLLERS"),
      Down(&Body, "SHOW &KERF"),
      Up(&Body, "SHOW &LIMITS"),
      Green(&Body, "REF &Z"),
      Pad(&Body, "&&"),
      Long(&Body, "A-NAME-OF-THIRTY-TWO-CHARACTERS-   F10"),
      Options(&Body, "  SPEED % "),
      Entry(&Body),
      Marked(&Body),
      Pick(&Body),
      Single(&Body, Selection::Single),
      Several(&Body, Selection::Multiple),
      Flood(&Body),
      Caption(&Body, "X :  &1"),
      Readout(&Body, "-1250.75", TypeStyle::Readout, Alignment::Right),
      Message(&Body, "\nCan Not Move\nWhile Machine Is Running Or In Feedhold !", TypeStyle::Bold,
              Alignment::Centre) {
  for (const char* caption : {"1 (&H)", "5 (&I)", "10 (&J)", "25 (&K)"}) {
    Speeds.emplace_back(&Options, caption).SetColours(shades::Keys, shades::Black);
  }
  Speeds[2].Select(Events::Silent);
  for (const MarkKind kind : {MarkKind::Warning, MarkKind::Question, MarkKind::Information}) {
    Marks.emplace_back(&Body, kind).SetColours(shades::Header, shades::Red);
  }
  Disabled.SetEnabled(false);
  Down.SetDown(true, Events::Silent);
  Entry.SetText("BRACKET-4");
  Entry.SetCursor(9);
  Marked.SetText("1250/2+13.5");
  Marked.SelectAll();
  Pick.SetItems({"SHOP", "GASKETS", "TEST"});
  Pick.SetCurrent(0);
  for (int i = 1; i < 30; ++i) {
    Single.Add("PROGRAM-" + std::to_string(i));
    Several.Add("G01 X" + std::to_string(i) + " Y20");
  }
  Single.SetCurrent(2);
  Several.SetSelected(1, true);
  Several.SetSelected(3, true);
  Flood.SetValue(40);
  Message.SetPlainText(true);
  Readout.SetFilled(true);
  Readout.SetRim(true);
  Colour();
  Screen.SetDefaultFocus(&Focused);
  Screen.OnLayout([this](const Metrics& m) { Layout(m); });
}

void ControlShowcase::Colour() {
  Screen.SetColours(shades::Header, shades::Black);
  for (Control* control : Screen.Controls()) {
    if (dynamic_cast<Button*>(control)) control->SetColours(shades::Keys, shades::Black);
  }
  Green.SetColours(shades::Green, shades::Black);
  Focused.SetColours(shades::Green, shades::Black);
  Pad.SetColours(shades::Cyan, shades::Black);
  for (Control* box : std::initializer_list<Control*>{&Entry, &Marked, &Pick, &Single, &Several,
                                                      &Flood, &Readout}) {
    box->SetColours(shades::Plot, shades::Yellow);
  }
}

void ControlShowcase::Layout(const Metrics& m) {
  Screen.SetSize(m.Px(880), m.Px(760));
  Area rest = Screen.Inside();
  Title.Place(TakeTop(rest, m.TitleHeight));
  Body.Place(rest);
  Area in = Area{0, 0, rest.Width, rest.Height}.Inset(m.Margin);
  const auto first = Columns(TakeTop(in, m.KeyHeight, m.Px(16)), 4, m.Gap);
  Focused.Place(first[0]);
  Plain.Place(first[1]);
  Disabled.Place(first[2]);
  Green.Place(first[3]);
  const auto second = Columns(TakeTop(in, m.KeyHeight, m.Px(16)), 4, m.Gap);
  Down.Place(second[0]);
  Up.Place(second[1]);
  Pad.Place(second[2]);
  Long.Place(second[3]);
  Options.Place(TakeTop(in, Options.HeightFor(m, m.PadKeyHeight), m.Px(16)));
  const auto speeds = Columns(Options.Inside(), 4, m.Gap);
  for (std::size_t i = 0; i < Speeds.size(); ++i) Speeds[i].Place(speeds[i]);
  const auto boxes = Columns(TakeTop(in, m.EntryHeight, m.Px(16)), 3, m.Gap);
  Entry.Place(boxes[0]);
  Marked.Place(boxes[1]);
  Pick.Place(boxes[2]);
  Area low = TakeBottom(in, m.Px(96));
  for (auto& mark : Marks) mark.Place(TakeLeft(low, m.Px(72), m.Gap));
  Message.Place(low);
  Area line = TakeBottom(in, m.Px(44), m.Px(8));
  Caption.Place(TakeLeft(line, m.Px(90), m.Gap));
  Readout.Place(TakeLeft(line, m.Px(220), m.Px(16)));
  Flood.Place(line.Inset(0, m.Px(8)));
  (void)TakeBottom(in, m.Px(8));
  const auto lists = Columns(in, 2, m.Gap);
  Single.Place(lists[0]);
  Several.Place(lists[1]);
}

}  // namespace torvane::tests
