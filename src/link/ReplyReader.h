// The value in a reply to a typed query.
#pragma once

#include <string_view>

namespace torvane::link {

/// The number in the reply to `query`. The controller echoes the query with its carriage return,
/// one further character follows, then the value; its line end and the prompt close the reply.
/// Behind the echo the cut goes by lengths alone, not by what the characters are. A reply too short
/// for it or without the echo, a text that is no number and a number that is not finite give 0.
[[nodiscard]] double ReadReplyValue(std::string_view query, std::string_view reply);

}  // namespace torvane::link
