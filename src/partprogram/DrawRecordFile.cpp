// The one place that knows where a field of a record lies on disk.
#include <algorithm>
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

/// A row for all the figures or marks of a record, wherever they are kept in memory.
template <typename Name, typename Value, std::size_t Count, std::size_t At>
struct Named {
  static constexpr std::size_t Offset = At;
};

template <typename... Fields>
struct Layout {};

/// Members that are named, to take some of a layout's fields.
template <auto Pointer>
struct Member {};
template <auto... Pointers>
struct Members {
  template <auto Pointer>
  static constexpr bool Hold = (std::is_same_v<Member<Pointer>, Member<Pointers>> || ...);
};

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
                          Field<&BeamState::Placement, 41>>;

constexpr std::size_t BeamAt = 308;

using RecordLayout = Layout<Field<&DrawRecord::Code, 0>,               //
                            Field<&CommonFields::Name, 2>,             //
                            Field<&CommonFields::Material, 20>,        //
                            Field<&DrawRecord::BlockNumber, 92>,       //
                            Field<&DrawRecord::SubNumber, 94>,         //
                            Field<&DrawRecord::SubBlock, 96>,          //
                            Field<&DrawRecord::RecordIndex, 98>,       //
                            Field<&DrawRecord::TableLine, 100>,        //
                            Field<&DrawRecord::SkipLevel, 102>,        //
                            Field<&DrawRecord::StartPoint, 104>,       //
                            Field<&DrawRecord::MidPoint, 116>,         //
                            Field<&DrawRecord::EndPoint, 128>,         //
                            Field<&DrawRecord::CentrePoint, 140>,      //
                            Field<&DrawRecord::ProfileStart, 152>,     //
                            Field<&DrawRecord::ProfileEnd, 164>,       //
                            Named<Figure, float, 18, 176>,             //
                            Named<Mark, std::int16_t, 12, 248>,        //
                            Field<&DrawRecord::KerfSide, 272>,         //
                            Field<&CommonFields::Reserved, 274>,       //
                            Field<&DrawRecord::BoxInner, 276>,         //
                            Field<&DrawRecord::BoxOuter, 292>,         //
                            Field<&CommonFields::BeamState1, BeamAt>,  //
                            Field<&CommonFields::ProfileNumber, 357>,  //
                            Field<&CommonFields::BeamState2, 361>,     //
                            Field<&DrawRecord::OwnNumber, 410>,        //
                            Field<&DrawRecord::Feed, 414>,             //
                            Field<&CommonFields::Settings, 418>,       //
                            Field<&DrawRecord::Blended, 514>>;

/// What a plot reads beside the figures and the beam.
using Plotted = Members<&DrawRecord::Code, &DrawRecord::SkipLevel, &DrawRecord::StartPoint,
                        &DrawRecord::EndPoint, &DrawRecord::CentrePoint, &DrawRecord::KerfSide,
                        &DrawRecord::Blended>;

/// A float may be no number, and a zero may have a sign.
template <typename Value>
bool SameBits(const Value& left, const Value& right) {
  using Bits = std::array<char, sizeof(Value)>;
  return std::bit_cast<Bits>(left) == std::bit_cast<Bits>(right);
}

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
  static bool Same(const Value& left, const Value& right) { return SameBits(left, right); }

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
  static bool Same(const std::array<Value, Count>& left, const std::array<Value, Count>& right) {
    return SameBits(left, right);
  }
};

/// A record in its two parts.
template <typename Own, typename Common>
struct Parts {
  Own& Record;
  Common& Shared;
};

template <typename Part, typename Value, typename Class>
auto& MemberOf(Part& part, Value Class::*member) {
  if constexpr (std::is_same_v<std::remove_const_t<Part>, Class>) {
    return part.*member;
  } else if constexpr (std::is_same_v<Class, CommonFields>) {
    return part.Shared.*member;
  } else {
    return part.Record.*member;
  }
}

template <typename Value, typename Class>
Value ValueOf(Value Class::*member);
template <typename Value, typename Class>
Class ClassOf(Value Class::*member);

/// How a row of a layout lies on disk.
template <typename Row>
struct DiskRow {
  using Type = Disk<decltype(ValueOf(Row::Member))>;
  static constexpr std::size_t Size = Type::Size;

  template <typename Record>
  static void Put(const Record& record, char* bytes) {
    Type::Put(MemberOf(record, Row::Member), bytes + Row::Offset);
  }
  template <typename Record>
  static void Get(Record& record, const char* bytes) {
    Type::Get(MemberOf(record, Row::Member), bytes + Row::Offset);
  }
  /// A member of another part is no difference.
  template <typename Part>
  static bool Same(const Part& left, const Part& right) {
    if constexpr (std::is_same_v<decltype(ClassOf(Row::Member)), Part>) {
      return Type::Same(left.*Row::Member, right.*Row::Member);
    } else {
      return true;
    }
  }
  template <typename Some>
  static void GetSome(DrawRecord& record, const char* bytes) {
    if constexpr (Some::template Hold<Row::Member>) Get(record, bytes);
  }
};

template <typename Name, typename Value, std::size_t Count, std::size_t At>
struct DiskRow<Named<Name, Value, Count, At>> {
  static constexpr std::size_t Size = Count * sizeof(Value);

  template <typename Record>
  static void Put(const Record& record, char* bytes) {
    Each([&](Name name, std::size_t offset) {
      const Value value = RoomOf(name) < NoRoom ? std::as_const(record.Record)[name]
                                                : ListOf(record.Shared)[PlaceOf(name)];
      Disk<Value>::Put(value, bytes + offset);
    });
  }
  template <typename Record>
  static void Get(Record& record, const char* bytes) {
    Each([&](Name name, std::size_t offset) {
      Value& value =
          RoomOf(name) < NoRoom ? record.Record[name] : ListOf(record.Shared)[PlaceOf(name)];
      Disk<Value>::Get(value, bytes + offset);
    });
  }
  static bool Same(const CommonFields& left, const CommonFields& right) {
    return Disk<std::array<Value, Count>>::Same(ListOf(left), ListOf(right));
  }
  /// Of the figures those that have room in a record.
  template <typename Some>
  static void GetSome(DrawRecord& record, const char* bytes) {
    if constexpr (std::is_same_v<Name, Figure>) {
      Each([&](Name name, std::size_t offset) {
        if (RoomOf(name) < NoRoom) Disk<Value>::Get(record[name], bytes + offset);
      });
    }
  }

 private:
  template <typename Common>
  static auto& ListOf(Common& common) {
    if constexpr (std::is_same_v<Name, Figure>) {
      return common.Figures;
    } else {
      return common.Marks;
    }
  }
  template <typename Do>
  static void Each(Do&& act) {
    [&]<std::size_t... Places>(std::index_sequence<Places...>) {
      (act(static_cast<Name>(Places), At + Places * sizeof(Value)), ...);
    }
    (std::make_index_sequence<Count>());
  }
};

/// A record of rows that follow one another without a gap.
template <typename List>
struct DiskRows;

template <typename... Rows>
struct DiskRows<Layout<Rows...>> {
  static constexpr std::size_t Size = (DiskRow<Rows>::Size + ...);

  static constexpr bool WithoutGaps() {
    std::size_t next = 0;
    bool fits = true;
    ((fits = fits && Rows::Offset == next, next += DiskRow<Rows>::Size), ...);
    return fits;
  }
  static_assert(WithoutGaps(), "a field does not begin where the one before it ends");

  template <typename Record>
  static void Put(const Record& record, char* bytes) {
    (DiskRow<Rows>::Put(record, bytes), ...);
  }
  template <typename Record>
  static void Get(Record& record, const char* bytes) {
    (DiskRow<Rows>::Get(record, bytes), ...);
  }
  template <typename Part>
  static bool Same(const Part& left, const Part& right) {
    return (DiskRow<Rows>::Same(left, right) && ...);
  }
  template <typename Some>
  static void GetSome(DrawRecord& record, const char* bytes) {
    (DiskRow<Rows>::template GetSome<Some>(record, bytes), ...);
  }
};

template <>
struct Disk<Point3> : DiskRows<PointLayout> {};
template <>
struct Disk<Box> : DiskRows<BoxLayout> {};
template <>
struct Disk<BeamState> : DiskRows<BeamLayout> {};

using DiskRecord = DiskRows<RecordLayout>;

static_assert(Disk<BeamState>::Size == 49);
static_assert(DiskRecord::Size == DrawRecordSize);
static_assert(sizeof(float) == 4 && std::numeric_limits<float>::is_iec559);

void PutParts(const DrawRecord& record, const CommonFields& common, char* bytes) {
  DiskRecord::Put(Parts<const DrawRecord, const CommonFields>{record, common}, bytes);
}

void GetParts(DrawRecord& record, CommonFields& common, const char* bytes) {
  Parts<DrawRecord, CommonFields> parts{record, common};
  DiskRecord::Get(parts, bytes);
}

}  // namespace

CommonFields& DrawRecord::ChangeCommon() {
  if (!common_) {
    common_ = std::make_shared<CommonFields>();
  } else if (common_.use_count() > 1) {
    common_ = std::make_shared<CommonFields>(*common_);
  }
  return *common_;
}

bool SameOnDisk(const CommonFields& left, const CommonFields& right) {
  return DiskRecord::Same(left, right);
}

void EncodeRecord(const DrawRecord& record, std::span<char, DrawRecordSize> bytes) {
  PutParts(record, record.Common(), bytes.data());
}

DrawRecord DecodeRecord(std::span<const char, DrawRecordSize> bytes) {
  return RecordDecoder().Decode(bytes);
}

DrawRecord RecordDecoder::Decode(std::span<const char, DrawRecordSize> bytes) {
  DrawRecord record;
  CommonFields common;
  GetParts(record, common, bytes.data());
  const auto same = std::find_if(recent_.begin(), recent_.end(), [&](const auto& kept) {
    return kept != nullptr && SameOnDisk(*kept, common);
  });
  if (same != recent_.end()) {
    record.Share(*same);
  } else {
    record.Share(recent_[oldest_] = std::make_shared<CommonFields>(common));
    oldest_ = (oldest_ + 1) % Kept;
  }
  return record;
}

std::int16_t CodeIn(std::span<const char, DrawRecordSize> bytes) {
  std::int16_t code = 0;
  Disk<std::int16_t>::Get(code, bytes.data());
  return code;
}

void DecodePlotFields(std::span<const char, DrawRecordSize> bytes, DrawRecord& record) {
  DiskRecord::GetSome<Plotted>(record, bytes.data());
  std::int16_t on = 0;
  Disk<std::int16_t>::Get(on, bytes.data() + BeamAt);
  if (on != record.Common().BeamState1.On) record.ChangeCommon().BeamState1.On = on;
}

}  // namespace torvane::partprogram
