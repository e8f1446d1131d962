// The one place that knows where a field of a record lies on disk.
#include <bit>
#include <cstring>
#include <limits>
#include <type_traits>
#include <utility>

#include "partprogram/DrawRecord.h"

namespace torvane::partprogram {

namespace {

/// One row of a layout: the member and the offset of its first byte.
template <auto Pointer, std::size_t At>
struct Field {
  static constexpr auto Member = Pointer;
  static constexpr std::size_t Offset = At;
};

template <typename... Fields>
struct Layout {};

using PointLayout = Layout<Field<&Point3::X, 0>, Field<&Point3::Y, 4>, Field<&Point3::Z, 8>>;

using BoxLayout =
    Layout<Field<&Box::MinX, 0>, Field<&Box::MinY, 4>, Field<&Box::MaxX, 8>, Field<&Box::MaxY, 12>>;

using BeamLayout = Layout<Field<&BeamState::On, 0>,              //
                          Field<&BeamState::Kind, 2>,            //
                          Field<&BeamState::ToolName, 3>,        //
                          Field<&BeamState::ProfilingMark, 21>,  //
                          Field<&BeamState::Carried, 25>,        //
                          Field<&BeamState::Angle, 33>,          //
                          Field<&BeamState::StationNumber, 37>,  //
                          Field<&BeamState::StationType, 39>,    //
                          Field<&BeamState::Placement, 41>,      //
                          Field<&BeamState::Number, 49>>;

/// Members that are named, to take some of a layout's fields.
template <auto Pointer>
struct Named {};
template <auto... Pointers>
struct Members {
  template <auto Pointer>
  static constexpr bool Hold = (std::is_same_v<Named<Pointer>, Named<Pointers>> || ...);
};

}  // namespace

/// The fields of a record, and those of them that a plot reads.
struct DrawRecordFields {
  using All = Layout<Field<&DrawRecord::Code, 0>,            //
                     Field<&DrawRecord::Name, 2>,            //
                     Field<&DrawRecord::Material, 20>,       //
                     Field<&DrawRecord::BlockNumber, 92>,    //
                     Field<&DrawRecord::SubNumber, 94>,      //
                     Field<&DrawRecord::SubBlock, 96>,       //
                     Field<&DrawRecord::RecordIndex, 98>,    //
                     Field<&DrawRecord::TableLine, 100>,     //
                     Field<&DrawRecord::SkipLevel, 102>,     //
                     Field<&DrawRecord::StartPoint, 104>,    //
                     Field<&DrawRecord::MidPoint, 116>,      //
                     Field<&DrawRecord::EndPoint, 128>,      //
                     Field<&DrawRecord::CentrePoint, 140>,   //
                     Field<&DrawRecord::ProfileStart, 152>,  //
                     Field<&DrawRecord::ProfileEnd, 164>,    //
                     Field<&DrawRecord::values_, 176>,       //
                     Field<&DrawRecord::flags_, 248>,        //
                     Field<&DrawRecord::KerfSide, 272>,      //
                     Field<&DrawRecord::Reserved, 274>,      //
                     Field<&DrawRecord::BoxInner, 276>,      //
                     Field<&DrawRecord::BoxOuter, 292>,      //
                     Field<&DrawRecord::BeamState1, 308>,    //
                     Field<&DrawRecord::BeamState2, 361>,    //
                     Field<&DrawRecord::Feed, 414>,          //
                     Field<&DrawRecord::Settings, 418>,      //
                     Field<&DrawRecord::Blended, 514>>;
  using Plotted = Members<&DrawRecord::Code, &DrawRecord::SkipLevel, &DrawRecord::StartPoint,
                          &DrawRecord::EndPoint, &DrawRecord::CentrePoint, &DrawRecord::values_,
                          &DrawRecord::KerfSide, &DrawRecord::BeamState1, &DrawRecord::Blended>;
};

namespace {

/// How a type lies on disk: its size and the two ways over.
template <typename Value>
struct Disk {
  static_assert(std::is_arithmetic_v<Value>);
  static constexpr std::size_t Size = sizeof(Value);

  static void Put(const Value& value, char* bytes) {
    std::memcpy(bytes, &value, Size);
    if constexpr (std::endian::native == std::endian::big) Turn(bytes);
  }
  static void Get(Value& value, const char* bytes) {
    char copy[Size];
    std::memcpy(copy, bytes, Size);
    if constexpr (std::endian::native == std::endian::big) Turn(copy);
    std::memcpy(&value, copy, Size);
  }

 private:
  static void Turn(char* bytes) {
    for (std::size_t i = 0; i < Size / 2; ++i) std::swap(bytes[i], bytes[Size - 1 - i]);
  }
};

template <typename Value, std::size_t Count>
struct Disk<std::array<Value, Count>> {
  static constexpr std::size_t Size = Count * Disk<Value>::Size;

  static void Put(const std::array<Value, Count>& values, char* bytes) {
    for (std::size_t i = 0; i < Count; ++i) {
      Disk<Value>::Put(values[i], bytes + i * Disk<Value>::Size);
    }
  }
  static void Get(std::array<Value, Count>& values, const char* bytes) {
    for (std::size_t i = 0; i < Count; ++i) {
      Disk<Value>::Get(values[i], bytes + i * Disk<Value>::Size);
    }
  }
};

template <typename F, typename Record>
using TypeOf = std::remove_cvref_t<decltype(std::declval<Record>().*F::Member)>;

/// A record of fields that follow one another without a gap.
template <typename Record, typename List>
struct DiskRecord;

template <typename Record, typename... Fields>
struct DiskRecord<Record, Layout<Fields...>> {
  static constexpr std::size_t Size = (Disk<TypeOf<Fields, Record>>::Size + ...);

  static constexpr bool WithoutGaps() {
    std::size_t next = 0;
    bool fits = true;
    ((fits = fits && Fields::Offset == next, next += Disk<TypeOf<Fields, Record>>::Size), ...);
    return fits;
  }
  static_assert(WithoutGaps(), "a field does not begin where the one before it ends");

  static void Put(const Record& record, char* bytes) {
    (Disk<TypeOf<Fields, Record>>::Put(record.*Fields::Member, bytes + Fields::Offset), ...);
  }
  static void Get(Record& record, const char* bytes) {
    (Disk<TypeOf<Fields, Record>>::Get(record.*Fields::Member, bytes + Fields::Offset), ...);
  }
  template <typename Some>
  static void GetSome(Record& record, const char* bytes) {
    (GetIf<Fields, Some::template Hold<Fields::Member>>(record, bytes), ...);
  }

 private:
  template <typename F, bool Wanted>
  static void GetIf(Record& record, const char* bytes) {
    if constexpr (Wanted) Disk<TypeOf<F, Record>>::Get(record.*F::Member, bytes + F::Offset);
  }
};

template <>
struct Disk<Point3> : DiskRecord<Point3, PointLayout> {};
template <>
struct Disk<Box> : DiskRecord<Box, BoxLayout> {};
template <>
struct Disk<BeamState> : DiskRecord<BeamState, BeamLayout> {};
template <>
struct Disk<DrawRecord> : DiskRecord<DrawRecord, DrawRecordFields::All> {};

static_assert(Disk<BeamState>::Size == 53);
static_assert(Disk<DrawRecord>::Size == DrawRecordSize);
static_assert(sizeof(float) == 4 && std::numeric_limits<float>::is_iec559);

}  // namespace

void EncodeRecord(const DrawRecord& record, std::span<char, DrawRecordSize> bytes) {
  Disk<DrawRecord>::Put(record, bytes.data());
}

DrawRecord DecodeRecord(std::span<const char, DrawRecordSize> bytes) {
  DrawRecord record;
  Disk<DrawRecord>::Get(record, bytes.data());
  return record;
}

void DecodePlotFields(std::span<const char, DrawRecordSize> bytes, DrawRecord& record) {
  Disk<DrawRecord>::GetSome<DrawRecordFields::Plotted>(record, bytes.data());
}

}  // namespace torvane::partprogram
