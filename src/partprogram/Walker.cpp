#include "partprogram/Walker.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "core/General.h"
#include "partprogram/WordValues.h"

namespace torvane::partprogram {

std::int32_t ScanBlockNumber(std::string_view block) {
  constexpr std::int64_t Largest = std::numeric_limits<std::int32_t>::max();
  bool behindN = false;
  bool digits = false;
  std::int64_t number = 0;
  for (const char c : block) {
    if (c == ' ') continue;
    if (c == 'N') {
      behindN = true;
    } else if (behindN && c >= '0' && c <= '9') {
      digits = true;
      number = std::min(number * 10 + (c - '0'), Largest);
    } else {
      break;
    }
  }
  return static_cast<std::int32_t>(digits ? number : static_cast<std::int64_t>(core::NoValue));
}

ProgramLines::ProgramLines(std::string_view text) : lines_(core::SplitLines(text)) {}

std::size_t ProgramLines::Find(std::int32_t blockNumber) {
  if (!numbered_) {
    numbered_ = true;
    Block block;
    numbers_.reserve(lines_.size());
    for (std::size_t i = 0; i < lines_.size(); ++i) {
      block.Prepare(lines_[i]);
      numbers_.emplace_back(ScanBlockNumber(block.Text()), i);
    }
    std::sort(numbers_.begin(), numbers_.end());
  }
  const auto found =
      std::lower_bound(numbers_.begin(), numbers_.end(), std::pair{blockNumber, std::size_t{0}});
  if (found == numbers_.end() || found->first != blockNumber) return lines_.size();
  return found->second;
}

Walker::Walker(std::string_view main, const std::map<std::int16_t, std::string>& subs,
               int maxBlocks)
    : main_(main), maxBlocks_(maxBlocks) {
  for (const auto& [number, text] : subs) AddSub(number, text);
  levels_[0].Lines = &main_;
}

void Walker::AddSub(std::int16_t number, std::string_view text) {
  subs_[number] = {ProgramLines(text), 0};
}

void Walker::AddSub(std::int16_t number, std::string_view text, std::int32_t firstBlock) {
  Sub sub{ProgramLines(text), 0};
  sub.First = sub.Lines.Find(firstBlock);
  subs_[number] = std::move(sub);
}

WalkStep Walker::Next() {
  for (;;) {
    SubLevel& level = Level();
    const bool ended = level.Next >= level.Lines->Count();
    if (ended && depth_ == 0) return WalkStep::End;
    if (++blocks_ > maxBlocks_) return WalkStep::Endless;
    if (ended) {
      Return();
      continue;
    }
    line_ = level.Lines->Line(level.Next++);
    block_.Prepare(line_);
    const bool target = std::exchange(arriving_, false);
    if (depth_ > 0 && !target && block_.HasAny(returns_)) {
      Return();
      continue;
    }
    if (level.Next > static_cast<std::size_t>(std::numeric_limits<std::int16_t>::max())) {
      return WalkStep::TooManyLines;
    }
    level.LineCount = static_cast<std::int16_t>(level.Next);
    return WalkStep::Block;
  }
}

void Walker::Jump(std::int32_t target) {
  SubLevel& level = Level();
  level.Next = level.Lines->Find(target);
  level.LineCount = 0;
  arriving_ = level.Next < level.Lines->Count();
}

SubLevel& Walker::Call(std::int16_t number) {
  ++depth_;
  SubLevel& level = Level();
  level = SubLevel{};
  level.Number = number;
  Sub& sub = subs_.at(number);
  level.Lines = &sub.Lines;
  level.First = level.Next = sub.First;
  return level;
}

bool Walker::Leave() {
  if (depth_ == 0) return false;
  --depth_;
  return true;
}

void Walker::Return() {
  SubLevel& level = Level();
  level.LineCount = 0;
  level.Next = level.First;
  if (--level.RepeatCount <= 0) --depth_;
}

std::map<std::int16_t, std::string> ExtractSubroutines(std::string_view converted) {
  std::map<std::int16_t, std::string> subs;
  std::string* open = nullptr;
  Block block;
  for (const std::string_view line : core::SplitLines(converted)) {
    if (open == nullptr && line.find('S') == std::string_view::npos) continue;
    block.Prepare(line);
    if (open == nullptr && OpensDefinition(block)) {
      open = &subs[static_cast<std::int16_t>(GetWordInteger(block.Text(), "S").Value)];
      open->clear();
    }
    if (open == nullptr) continue;
    open->append(line).append("\r\n");
    if (block.Has(Word::M02)) open = nullptr;
  }
  return subs;
}

}  // namespace torvane::partprogram
