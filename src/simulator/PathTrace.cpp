#include "simulator/PathTrace.h"

#include <utility>

#include "core/General.h"

namespace torvane::simulator {

namespace {

constexpr int AllPlaces = -1;

std::string Number(double value) { return core::NumberText(value, AllPlaces); }

std::string Point(const Position& at) {
  return "[" + Number(at.X) + "," + Number(at.Y) + "," + Number(at.Z) + "]";
}

const char* KindOf(const PathPiece& piece) {
  if (piece.Approach) return "approach";
  return piece.Cut ? "cut" : "travel";
}

bool GoesOn(const PathPiece& piece, const PathPiece& step) {
  return piece.Place == step.Place && piece.Cut == step.Cut && piece.Approach == step.Approach &&
         piece.Beam == step.Beam && piece.S1 == step.S0;
}

}  // namespace

std::string PathPieceJson(const PathPiece& piece) {
  std::string text = "{\"run\":" + std::to_string(piece.Place.Run);
  text += ",\"line\":" + std::to_string(piece.Place.Line);
  text += ",\"record\":" + std::to_string(piece.Place.Record);
  text += std::string(",\"kind\":\"") + KindOf(piece) + "\"";
  text += ",\"from\":" + Point(piece.From) + ",\"to\":" + Point(piece.To);
  text += ",\"s0\":" + Number(piece.S0) + ",\"s1\":" + Number(piece.S1);
  text += std::string(",\"beam\":") + (piece.Beam ? "true" : "false");
  text += ",\"skip\":" + std::to_string(piece.Place.Skip) + "}";
  return text;
}

void PathTrace::Add(const PathPiece& step) {
  if (!listener_ || step.S1 <= step.S0) return;
  if (open_ && GoesOn(*open_, step)) {
    open_->S1 = step.S1;
    open_->To = step.To;
    return;
  }
  Flush();
  open_ = step;
}

void PathTrace::Flush() {
  if (!open_) return;
  const PathPiece piece = *std::exchange(open_, std::nullopt);
  if (listener_) listener_(piece);
}

}  // namespace torvane::simulator
