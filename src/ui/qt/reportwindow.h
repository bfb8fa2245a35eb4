// A report: its lines to read, copy and save.
#pragma once
#include <QDialog>

#include "model/services/report.h"

class CQtUserInterface;
class QPlainTextEdit;

class CReportWindow : public QDialog {
 public:
  CReportWindow(CQtUserInterface& ui, const CReportFile& report, QWidget* parent);

 private:
  void Save();
  CQtUserInterface& m_ui;
  QPlainTextEdit* m_text;
};
