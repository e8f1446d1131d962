#include "tools/ContractReport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>

#include "tools/JsonValues.h"

namespace torvane::tools {

namespace {

constexpr std::size_t StateColumn = 11;  // characters

struct StateName {
  ClauseState State;
  const char* Text;
  const char* Json;
};
constexpr StateName StateNames[] = {{ClauseState::Holds, "holds", "holds"},
                                    {ClauseState::Fails, "FAILS", "fails"},
                                    {ClauseState::NotTried, "not tried", "not tried"}};

const StateName& NameOf(ClauseState state) {
  return *std::find_if(std::begin(StateNames), std::end(StateNames),
                       [state](const StateName& row) { return row.State == state; });
}

std::string Padded(std::string text, std::size_t width) {
  text.resize(std::max(text.size() + 1, width), ' ');
  return text;
}

int Count(const ContractResult& result, ClauseState state) {
  return static_cast<int>(
      std::count_if(result.Clauses.begin(), result.Clauses.end(),
                    [state](const ClauseResult& clause) { return clause.State == state; }));
}

}  // namespace

std::string ContractText(const ContractResult& result) {
  constexpr std::size_t NameColumn = 17;
  std::string text;
  for (const auto& clause : result.Clauses) {
    text += Padded(NameOf(clause.State).Text, StateColumn);
    text += Padded(clause.Name, NameColumn);
    text += clause.Says;
    text += '\n';
    if (clause.Text.empty()) continue;
    text.append(StateColumn + NameColumn, ' ');
    text += clause.Text;
    text += '\n';
  }
  text += NotBackText(result);
  text += std::to_string(Count(result, ClauseState::Holds)) + " of ";
  text += std::to_string(result.Clauses.size()) + " clauses hold";
  if (const int failing = Count(result, ClauseState::Fails); failing > 0) {
    text += ", " + std::to_string(failing) + " fail";
  }
  if (const int left = Count(result, ClauseState::NotTried); left > 0) {
    text += ", " + std::to_string(left) + " not tried";
  }
  return text + "\n";
}

std::string NotBackText(const ContractResult& result) {
  std::string text;
  for (const auto& lost : result.NotPutBack) {
    text += Padded("NOT BACK", StateColumn);
    text += lost;
    text += '\n';
  }
  return text;
}

std::string ContractJson(const ContractResult& result) {
  QJsonArray clauses;
  for (const auto& clause : result.Clauses) {
    clauses.append(QJsonObject{{"name", JsonText(clause.Name)},
                               {"says", JsonText(clause.Says)},
                               {"state", NameOf(clause.State).Json},
                               {"text", JsonText(clause.Text)}});
  }
  QJsonArray lost;
  for (const auto& text : result.NotPutBack) lost.append(JsonText(text));
  const QJsonObject whole{{"clauses", clauses},
                          {"holding", Count(result, ClauseState::Holds)},
                          {"failing", Count(result, ClauseState::Fails)},
                          {"notTried", Count(result, ClauseState::NotTried)},
                          {"notPutBack", lost},
                          {"good", result.Holds()}};
  return QJsonDocument(whole).toJson(QJsonDocument::Indented).toStdString();
}

}  // namespace torvane::tools
