#include "model/services/report.h"

#include "model/services/userinterface.h"

void CReportFile::View() const {
  if (HasProblems()) UserInterface().ViewReport(*this);
}
