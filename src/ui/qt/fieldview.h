// One field of a form on the screen: its editor, with the unit behind a length. What is typed goes to the field at
// once, so that what is drawn beside the form follows; the text is shown anew only when the person has left it.
#pragma once
#include <QWidget>
#include <functional>
#include <memory>

#include "model/controls/fields.h"

class CFieldView : public QWidget {
 public:
  CFormField& Field() const { return m_field; }
  /// What takes the keyboard.
  virtual QWidget& Editor() = 0;
  /// Whether the label stands in the editor itself, as that of a check box.
  virtual void SetLabel(const QString& text);
  virtual bool HasOwnLabel() const { return false; }
  /// Takes a text over that is still being typed.
  virtual void Commit() {}
  /// Shows the field as it is now.
  void Refresh();
  /// Marks the editor, the reason as its tooltip and description; an empty one takes the mark away.
  void ShowProblem(const QString& reason);

 protected:
  CFieldView(CFormField& field, QWidget* parent, std::function<void()> entered);
  virtual void ShowValue() = 0;
  void Enter(const SInput& input);
  /// Puts the editor, and what stands behind it, in a row.
  void Arrange(QWidget& editor, QWidget* behind = nullptr);
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void OpenCalculator();
  CFormField& m_field;
  std::function<void()> m_entered;
  bool m_hasProblem = false;
};

/// `entered` is called after a person has changed the field.
CFieldView* MakeFieldView(CFormField& field, QWidget* parent, std::function<void()> entered);
