// Port, switches and timings of the controller link.
#pragma once

#include <cstdint>
#include <string>

namespace torvane::core {

struct LinkSettings {
  std::int16_t CommPort = 0;  ///< below 1 turns the link off
  std::string PortSettings;   ///< baud,parity,data,stop
  std::int16_t Handshaking = 0;
  bool DtrKeyword = false;
  bool TrioLinkEnabled = false;  ///< never goes from false to true while the program runs
  bool PollLogEnabled = false;
  bool ReportCommsErrors = true;
  std::string LastComms;  ///< last line sent, without its carriage return
  bool ReplyTimedOut = false;
  std::int32_t PollPeriodMs = 50;
  std::int32_t PollResumeMs = 50;
  std::int32_t ReplyTimeoutMs = 10000;  ///< 0: wait without limit
  std::int32_t TrioReserved1 = 0;
  std::int32_t CommandDelayMs = 0;
  std::int32_t TrioReserved2 = 0;
  std::int32_t TrioReserved3 = 0;
  std::int16_t TableFillLines = 20;
  std::int16_t TableLeadLines = 15;
  bool PollingWanted = false;

  float Sys1 = 0;
  float Sys2 = 0;
  double JogMaxSpeed = 0;  ///< after "SYS(3)" of the parameter file
};

}  // namespace torvane::core
