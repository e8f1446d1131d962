// The two slots of selected programs.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace torvane::core {

/// The number of a slot: 1 or 2 and nothing else. A slot may be written as its number; any number
/// but 2 means slot 1, as at the start.
class Slot {
 public:
  constexpr Slot() = default;
  // NOLINTNEXTLINE(google-explicit-constructor,hicpp-explicit-conversions)
  constexpr Slot(int number) : second_(number == 2) {}

  [[nodiscard]] constexpr std::int16_t Number() const {
    return static_cast<std::int16_t>(second_ ? 2 : 1);
  }
  [[nodiscard]] constexpr Slot Other() const { return second_ ? 1 : 2; }

  friend constexpr bool operator==(Slot, Slot) = default;
  /// False for a number that is no slot's.
  friend constexpr bool operator==(Slot slot, int number) { return slot.Number() == number; }

 private:
  bool second_ = false;
};

inline constexpr std::array<Slot, 2> BothSlots = {1, 2};

/// One value for each slot.
template <typename Value>
class BySlot {
 public:
  BySlot() = default;
  BySlot(Value first, Value second) : values_{std::move(first), std::move(second)} {}

  [[nodiscard]] Value& operator[](Slot slot) { return values_[Index(slot)]; }
  [[nodiscard]] const Value& operator[](Slot slot) const { return values_[Index(slot)]; }

  [[nodiscard]] auto begin() { return values_.begin(); }
  [[nodiscard]] auto end() { return values_.end(); }
  [[nodiscard]] auto begin() const { return values_.begin(); }
  [[nodiscard]] auto end() const { return values_.end(); }

 private:
  static constexpr std::size_t Index(Slot slot) {
    return static_cast<std::size_t>(slot.Number() - 1);
  }
  std::array<Value, 2> values_{};
};

}  // namespace torvane::core
