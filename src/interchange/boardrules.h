// The rules of a board: net classes with the nets they hold, predefined sizes, and what holds for the whole board.
//
// They stand in the board file itself or in the project file beside it, depending on the age of the board.
#pragma once
#include <unordered_map>
#include <vector>

#include "interchange/boardclasses.h"
#include "interchange/json.h"
#include "interchange/sexpression.h"
#include "model/design/technology.h"

struct SViaSize {
  int size = 0;
  int drill = 0;
};

class CBoardRules {
 public:
  explicit CBoardRules(CImportSummary& summary) : classes(summary), m_summary(summary) {}
  /// One "net_class" list of the board file.
  void ReadClass(CSNode list);
  /// The "setup" list of the board file.
  void ReadSetup(CSNode list);
  void ReadProject(const SJson& project);

  CBoardClasses classes;
  std::unordered_map<CString, CColour> netColours;  // of nets that have their own
  std::vector<int> trackWidths;
  std::vector<SViaSize> viaSizes;
  SDesignSpacingsFields spacings;

 private:
  void ReadNetSettings(const SJson& section);
  void ReadJsonClass(const SJson& json);
  void ReadSizes(const SJson& settings);

  CImportSummary& m_summary;
};
