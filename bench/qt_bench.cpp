// The peers of Qt that the table compares with.
#include "bench/table.h"

#ifdef TECHSHEET_QT
#include <QApplication>
#include <QTableWidget>
#include <QUndoStack>
#include <cstdlib>
#include <utility>
#include <vector>

namespace {
constexpr int kRecords = 10'000;

/// Widgets need an application, but no screen.
void StartQt() {
  static int count = 1;
  static char name[] = "techsheet-bench";
  static char* arguments[] = {name, nullptr};
  if (QCoreApplication::instance()) return;
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  new QApplication(count, arguments);  // lives as long as the program
}

/// The columns of the Layer types page: mark, name, eight choices and flags, a length.
constexpr int kColumns = 11;
constexpr int kLengthColumn = 9;

QString LengthOf(int row, double unit) { return QString::number((100'000 + row) / unit, 'f', 3); }

void FillTable(QTableWidget& table) {
  table.setColumnCount(kColumns);
  table.setRowCount(kRecords);
  for (int row = 0; row < kRecords; ++row) {
    for (int col = 0; col < kColumns; ++col) {
      QString text = col == 0 ? QString() : col == 1 ? "Layer type " + QString::number(row) : QStringLiteral("Yes");
      if (col == kLengthColumn) text = LengthOf(row, 1e6);
      table.setItem(row, col, new QTableWidgetItem(text));
    }
  }
}

void OpenQtTable(benchmark::State& state) {
  StartQt();
  QTableWidget table;
  for (auto _ : state) {
    table.setRowCount(0);
    FillTable(table);
  }
}

void ChangeQtUnits(benchmark::State& state) {
  StartQt();
  QTableWidget table;
  FillTable(table);
  bool isMil = false;
  for (auto _ : state) {
    isMil = !isMil;
    for (int row = 0; row < kRecords; ++row)
      table.item(row, kLengthColumn)->setText(LengthOf(row, isMil ? 25'400 : 1e6));
  }
}

class CSetNumber : public QUndoCommand {
 public:
  CSetNumber(int& number, int value, QUndoCommand* macro = nullptr)
      : QUndoCommand(macro), m_number(number), m_other(value) {}
  void undo() override { std::swap(m_number, m_other); }
  void redo() override { std::swap(m_number, m_other); }

 private:
  int& m_number;
  int m_other;
};

/// Each number becomes another one, in one macro.
void ChangeInMacro(QUndoStack& stack, std::vector<int>& numbers) {
  stack.beginMacro(QStringLiteral("change"));
  for (int& number : numbers) stack.push(new CSetNumber(number, number + 1));
  stack.endMacro();
}

void ChangeInQtMacro(benchmark::State& state) {
  StartQt();
  std::vector<int> numbers(kRecords);
  for (auto _ : state) {
    state.PauseTiming();
    QUndoStack stack;
    state.ResumeTiming();
    ChangeInMacro(stack, numbers);
    state.PauseTiming();
    stack.clear();
    state.ResumeTiming();
  }
}

void UndoQtMacro(benchmark::State& state) {
  StartQt();
  std::vector<int> numbers(kRecords);
  QUndoStack stack;
  for (auto _ : state) {
    state.PauseTiming();
    stack.clear();
    ChangeInMacro(stack, numbers);
    state.ResumeTiming();
    stack.undo();
  }
}
}  // namespace

const SQtPeers& QtPeers() {
  static constexpr SQtPeers kPeers{OpenQtTable, ChangeQtUnits, ChangeInQtMacro, UndoQtMacro};
  return kPeers;
}
#else
const SQtPeers& QtPeers() {
  static constexpr SQtPeers kNone{};
  return kNone;
}
#endif
