#include <array>
#include <cstring>
#include <string>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "partprogram/DrawRecord.h"

using namespace torvane::partprogram;

namespace {

using Bytes = std::array<char, DrawRecordSize>;

void PutShort(Bytes& bytes, std::size_t at, int value) {
  bytes[at] = static_cast<char>(value & 0xFF);
  bytes[at + 1] = static_cast<char>((value >> 8) & 0xFF);
}
void PutLong(Bytes& bytes, std::size_t at, std::uint32_t value) {
  for (std::size_t i = 0; i < 4; ++i) bytes[at + i] = static_cast<char>((value >> (8 * i)) & 0xFF);
}
void PutFloat(Bytes& bytes, std::size_t at, float value) {
  std::uint32_t bits = 0;
  std::memcpy(&bits, &value, 4);
  PutLong(bytes, at, bits);
}
void PutText(Bytes& bytes, std::size_t at, std::size_t size, const std::string& text) {
  for (std::size_t i = 0; i < size; ++i) bytes[at + i] = i < text.size() ? text[i] : ' ';
}
void PutBeam(Bytes& bytes, std::size_t at, float seed) {
  PutShort(bytes, at, -1);
  bytes[at + 2] = 'P';
  PutText(bytes, at + 3, 18, "Laser");
  for (std::size_t i = 0; i < 4; ++i)
    PutFloat(bytes, at + 21 + 4 * i, seed + static_cast<float>(i));
  PutShort(bytes, at + 37, 7);
  PutShort(bytes, at + 39, 3);
  for (std::size_t i = 0; i < 3; ++i) {
    PutLong(bytes, at + 41 + 4 * i, 0x01020304U + static_cast<std::uint32_t>(i));
  }
}

/// Every field with a value of its own, laid out by hand.
Bytes HandLaid() {
  Bytes bytes{};
  PutShort(bytes, 0, 130);
  PutText(bytes, 2, 18, "Arc Profile");
  PutText(bytes, 20, 72, "Mild steel");
  for (std::size_t i = 0; i < 6; ++i) PutShort(bytes, 92 + 2 * i, -300 + static_cast<int>(i));
  for (std::size_t i = 0; i < 18; ++i) PutFloat(bytes, 104 + 4 * i, 1.5F * static_cast<float>(i));
  for (std::size_t i = 0; i < 18; ++i) PutFloat(bytes, 176 + 4 * i, -0.5F * static_cast<float>(i));
  for (std::size_t i = 0; i < 12; ++i) PutShort(bytes, 248 + 2 * i, 1000 + static_cast<int>(i));
  PutShort(bytes, 272, 2);
  PutShort(bytes, 274, 0);
  for (std::size_t i = 0; i < 8; ++i) PutFloat(bytes, 276 + 4 * i, 7.25F + static_cast<float>(i));
  PutBeam(bytes, 308, 20);
  PutBeam(bytes, 361, 40);
  PutFloat(bytes, 414, 2400);
  for (std::size_t i = 0; i < 24; ++i) PutFloat(bytes, 418 + 4 * i, 0.1F * static_cast<float>(i));
  PutShort(bytes, 514, -1);
  return bytes;
}

TEST(DrawRecord, LiesOnDiskAsToldFieldByField) {
  const Bytes bytes = HandLaid();
  const DrawRecord record = DecodeRecord(bytes);
  EXPECT_EQ(record.Code, 130);
  EXPECT_EQ(TextOf(record.Common().Name), "Arc Profile");
  EXPECT_EQ(TextOf(record.Common().Material), "Mild steel");
  EXPECT_EQ(record.BlockNumber, -300);
  EXPECT_EQ(record.SubNumber, -299);
  EXPECT_EQ(record.SubBlock, -298);
  EXPECT_EQ(record.RecordIndex, -297);
  EXPECT_EQ(record.TableLine, -296);
  EXPECT_EQ(record.SkipLevel, -295);
  EXPECT_EQ(record.StartPoint.Y, 1.5F);
  EXPECT_EQ(record.MidPoint.X, 4.5F);
  EXPECT_EQ(record.EndPoint.Z, 12.0F);
  EXPECT_EQ(record.CentrePoint.X, 13.5F);
  EXPECT_EQ(record.ProfileStart.X, 18.0F);
  EXPECT_EQ(record.ProfileEnd.Z, 25.5F);
  EXPECT_EQ(record[Figure::Sweep], -5.0F);
  EXPECT_EQ(record[Mark::CornerArc], 1011);
  EXPECT_EQ(record.KerfSide, 2);
  EXPECT_EQ(record.BoxInner.MaxY, 10.25F);
  EXPECT_EQ(record.BoxOuter.MinX, 11.25F);
  EXPECT_EQ(record.Common().BeamState1.On, -1);
  EXPECT_EQ(record.Common().BeamState1.Angle, 23.0F);
  EXPECT_EQ(record.Common().BeamState2.ProfilingMark, 40.0F);
  EXPECT_EQ(record.Common().BeamState2.StationNumber, 7);
  EXPECT_EQ(record.OwnNumber, 0x01020306);
  EXPECT_EQ(record.Feed, 2400.0F);
  EXPECT_EQ(record.Common().Settings[23], 0.1F * 23);
  EXPECT_EQ(record.Blended, -1);
}

TEST(DrawRecord, WritesBackTheSameBytes) {
  const Bytes bytes = HandLaid();
  Bytes written{};
  written.fill('?');
  EncodeRecord(DecodeRecord(bytes), written);
  EXPECT_EQ(written, bytes);
}

TEST(DrawRecord, ClearedIsBlanksZerosAndSettingsNotSet) {
  Bytes expected{};
  PutText(expected, 2, 18, "");
  PutText(expected, 20, 72, "");
  for (const std::size_t beam : {std::size_t{308}, std::size_t{361}}) {
    expected[beam + 2] = ' ';
    PutText(expected, beam + 3, 18, "");
  }
  for (std::size_t i = 0; i < 24; ++i) PutFloat(expected, 418 + 4 * i, -999);
  Bytes written{};
  EncodeRecord(DrawRecord{}, written);
  EXPECT_EQ(written, expected);
}

RC_GTEST_PROP(DrawRecord, AnyBytesReadAndWriteBack, ()) {
  Bytes bytes{};
  for (char& byte : bytes) byte = *rc::gen::arbitrary<char>();
  Bytes written{};
  EncodeRecord(DecodeRecord(bytes), written);
  RC_ASSERT(written == bytes);
}

TEST(DrawRecord, CutsTextThatIsTooLong) {
  EXPECT_EQ(TextOf(PadText<4>("ABCDEFG")), "ABCD");
  EXPECT_EQ(TextOf(PadText<4>("AB")), "AB");
  EXPECT_EQ(TextOf(PadText<4>("")), "");
}

}  // namespace
