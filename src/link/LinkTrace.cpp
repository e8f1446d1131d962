#include "link/LinkTrace.h"

#include "core/General.h"
#include "platform/RuntimeFault.h"

namespace torvane::link {

namespace {

constexpr std::string_view LineEnd = "\r\n";
constexpr std::size_t PrintZone = 14;  // columns

/// A label, the jump to the next print zone, and a text.
void AppendZoned(std::string& out, std::string_view label, std::string_view text) {
  out += label;
  out.append(PrintZone - label.size() % PrintZone, ' ');
  out += text;
  out += LineEnd;
}

}  // namespace

std::string PollLogRecord(std::string_view tag, std::string_view query, std::string_view reply,
                          bool status) {
  std::string out;
  out.reserve(96 + tag.size() + query.size() + reply.size());
  out.append("*** ").append(tag).append(" ***").append(LineEnd);
  AppendZoned(out, "Query   :", core::Trim(query));
  AppendZoned(out, "Response:", core::Trim(reply));
  AppendZoned(out, "Status  :", status ? "-1" : "0");
  out += LineEnd;
  return out;
}

std::string ErrorLogRecord(std::string_view lastComms, std::string_view text) {
  std::string out("*** ERROR ***");
  out.append(LineEnd);
  out.append("Last Comms :  ").append(lastComms).append(LineEnd);
  out.append("Error Text :  ").append(text).append(LineEnd);
  out.append(LineEnd);
  return out;
}

std::string FailureText(std::string_view lastComms, std::string_view text) {
  std::string out("An error occurred while talking to TRIO !\n\nLast Comms :  ");
  out.append(lastComms).append("\n\n").append(text).append("\n\nShutdown Torvane ?");
  return out;
}

bool LinkTrace::AppendExchange(std::string_view tag, std::string_view query, std::string_view reply,
                               bool status) {
  return Append(ServicePath("Polling.txt"), PollLogRecord(tag, query, reply, status));
}

void LinkTrace::AppendError(std::string_view lastComms, std::string_view text) {
  Append(ServicePath("Errors.txt"), ErrorLogRecord(lastComms, text));
}

bool LinkTrace::Append(const std::string& path, const std::string& record) {
  try {
    files_.AppendFile(path, record);
  } catch (const platform::RuntimeFault&) {
    return false;
  }
  return true;
}

bool LinkTrace::Rotate() {
  const std::string log = ServicePath("Polling.txt");
  if (files_.FileSize(log) <= PollLogLimit) return true;
  // What a copy and a deletion would leave, without holding up the screens for 50 MB.
  const std::string kept = ServicePath("Polling.bak");
  try {
    files_.DeleteFile(kept);
    files_.RenameFile(log, kept);
  } catch (const platform::RuntimeFault&) {
    return false;
  }
  return true;
}

std::string LinkTrace::ServicePath(std::string_view name) const {
  std::string path = directories_.ServiceDirectory;
  path += name;
  return path;
}

}  // namespace torvane::link
