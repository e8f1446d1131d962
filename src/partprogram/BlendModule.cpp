// The blend pass: marks each profile element that continues the direction of the one before it, so
// that the controller need not stop at the joint. No geometry changes.
#include "partprogram/BlendModule.h"

#include "partprogram/Tangent.h"

namespace torvane::partprogram {

namespace {

/// The last element.
struct BlendState {
  enum class ElementKind : std::uint8_t { None = 0, Line = 1, Arc = 2, NegativeArc = 3 };

  ElementKind Kind = ElementKind::None;
  double Angle = 0;       ///< of a line, degrees
  double StartAngle = 0;  ///< of an arc, degrees
  double Sweep = 0;       ///< of an arc, degrees
  std::int16_t Side = 0;

  /// Direction in which the element ends.
  [[nodiscard]] double Exit() const {
    return Kind == ElementKind::Line ? Angle : ArcExit(StartAngle, Sweep);
  }
};

class BlendPass {
 public:
  explicit BlendPass(const core::MachineData& machine) : machine_(machine) {}

  /// True where the record continues the element before it.
  bool Take(const DrawRecord& record) {
    switch (record.Code) {
      case RecordCode::LineProfile:
        return BlendLine(record);
      case RecordCode::ArcProfile:
        return BlendArc(record);
      // These stop the cut.
      case RecordCode::Move:
      case RecordCode::Dwell:
      case RecordCode::ProgramStop:
      case RecordCode::Reposition:
      case RecordCode::FlipRotate:
      case RecordCode::LoadPosition:
      case RecordCode::OpenClamps:
        state_ = {};
        return false;
      default:
        return false;
    }
  }

 private:
  using Kind = BlendState::ElementKind;

  bool BlendLine(const DrawRecord& record) {
    const double angle = core::NormaliseAngle(record[Figure::Angle]);
    const bool blended = Continues(angle, record.KerfSide);
    state_ = {Kind::Line, angle, 0, 0, record.KerfSide};
    return blended;
  }

  bool BlendArc(const DrawRecord& record) {
    const double startAngle = record[Figure::StartAngle];
    const double sweep = record[Figure::Sweep];
    const bool blended = Continues(ArcTangent(startAngle, sweep), record.KerfSide) &&
                         !(record[Figure::Radius] < machine_.BlendMinRadius);
    state_ = {sweep < 0 ? Kind::NegativeArc : Kind::Arc, 0, startAngle, sweep, record.KerfSide};
    return blended;
  }

  [[nodiscard]] bool Continues(double entry, std::int16_t side) const {
    return state_.Kind != Kind::None && side == state_.Side &&
           WithinAngle(entry, state_.Exit(), machine_.BlendAngle);
  }

  const core::MachineData& machine_;
  BlendState state_;
};

}  // namespace

void MarkBlends(std::vector<DrawRecord>& kerf, const core::MachineData& machine) {
  BlendPass pass(machine);
  for (std::size_t i = 1; i < kerf.size(); ++i) {
    kerf[i].Blended = static_cast<std::int16_t>(pass.Take(kerf[i]) ? -1 : 0);
  }
}

}  // namespace torvane::partprogram
