// The steps of the open design: the done ones, the present, and those that can be done again.
#pragma once
#include <QListWidget>
#include <functional>

#include "model/design/technology.h"

/// What a step is called: the caption of its command.
QString StepText(const CUndoJournal::SStep& step);

class CHistoryList : public QListWidget {
  Q_OBJECT

 public:
  explicit CHistoryList(QWidget* parent);

  /// Shows the steps of a design; null for none.
  void Show(CTechnology* technology);
  /// Called after steps were undone or done again.
  std::function<void()> onJumped;

 private:
  void JumpTo(std::size_t done);
  CTechnology* m_technology = nullptr;
};
