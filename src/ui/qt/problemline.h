// The line under a form that says why something was refused: a sign and the reason, announced to those who
// listen instead of looking. Takes no room while there is nothing to say.
#pragma once
#include <QWidget>

class QLabel;

class CProblemLine : public QWidget {
 public:
  explicit CProblemLine(QWidget* parent);
  void Show(const QString& reason);
  void Clear() { hide(); }
  QString Text() const;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void TakeHeight();
  QLabel* m_text;
};
