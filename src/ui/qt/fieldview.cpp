#include "ui/qt/fieldview.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>

#include "technology/calculator.h"
#include "ui/qt/colourcombo.h"
#include "ui/qt/commandtext.h"
#include "ui/qt/decimalpoint.h"
#include "ui/qt/theme.h"

CFieldView::CFieldView(CFormField& field, QWidget* parent, std::function<void()> entered)
    : QWidget(parent), m_field(field), m_entered(std::move(entered)) {}

void CFieldView::SetLabel(const QString& text) { Editor().setAccessibleName(PlainText(text)); }

void CFieldView::Arrange(QWidget& editor, QWidget* behind) {
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(&editor, 1);
  if (behind) row->addWidget(behind);
  editor.installEventFilter(this);
}

void CFieldView::Refresh() {
  Editor().setEnabled(m_field.IsEnabled());
  ShowValue();
}

void CFieldView::Enter(const SInput& input) {
  CString why;
  m_field.Enter(input, why);  // a refusal leaves the value, which is shown again
  ShowProblem({});
  m_entered();
}

void CFieldView::ShowProblem(const QString& reason) {
  if (reason.isEmpty() && !m_hasProblem) return;
  m_hasProblem = !reason.isEmpty();
  QPalette palette;
  if (m_hasProblem) palette.setColor(QPalette::Base, ProblemGround(this->palette()));
  Editor().setPalette(palette);
  Editor().setToolTip(ToolTip(reason));
  Editor().setAccessibleDescription(reason);
}

bool CFieldView::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn) {
    m_field.SetFocus();
  } else if (event->type() == QEvent::FocusOut) {
    Commit();
  } else if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_F4 &&
             m_field.IsNumber() && !m_field.IsKindOf(CCalcEdit::GetThisClass())) {
    OpenCalculator();
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

void CFieldView::OpenCalculator() {
  Commit();
  double start = 0;
  Calculate(m_field.GetText(), start);
  CCalcDialog calculator(nullptr, false, start);
  if (calculator.DoModal() != CDialog::kOk) return;
  constexpr int kDecimals = 9;  // finer than a design unit in every unit
  QString result = QString::number(calculator.GetResult(), 'f', kDecimals);
  while (result.endsWith(u'0')) result.chop(1);
  if (result.endsWith(u'.')) result.chop(1);
  Enter(SInput::Text(FromQt(result)));
  Refresh();
}

namespace {
class CTextView final : public CFieldView {
 public:
  CTextView(CFormField& field, QWidget* parent, std::function<void()> entered)
      : CFieldView(field, parent, std::move(entered)), m_edit(new QLineEdit(this)), m_unit(new QLabel(this)) {
    m_unit->setTextFormat(Qt::PlainText);
    Arrange(*m_edit, m_unit);
    connect(m_edit, &QLineEdit::textEdited, this, [this](const QString& text) {
      m_typing = true;
      Enter(SInput::Text(FromQt(Field().IsNumber() ? WithDecimalPoint(text) : text)));
    });
    connect(m_edit, &QLineEdit::editingFinished, this, [this] { Commit(); });
  }
  QWidget& Editor() override { return *m_edit; }
  void Commit() override {
    if (!m_typing) return;
    m_typing = false;
    ShowValue();
  }
  void ShowValue() override {
    const QString unit = ToQt(Field().GetUnit());
    m_unit->setText(unit);
    m_unit->setVisible(!unit.isEmpty());
    const CString text = Field().GetText();
    if (!m_typing && m_edit->text() != ToQt(text)) m_edit->setText(ToQt(text));
    const bool wrong = !unit.isEmpty() && !m_typing && !text.empty() && Field().GetOuterValue() == CValue();
    if (wrong) ShowProblem(QtText(Text::LengthInvalid, {text}));
  }

 private:
  QLineEdit* m_edit;
  QLabel* m_unit;
  bool m_typing = false;
};

class CNumberView final : public CFieldView {
 public:
  CNumberView(CIntegerEdit& field, QWidget* parent, std::function<void()> entered)
      : CFieldView(field, parent, std::move(entered)), m_number(field), m_spin(new QSpinBox(this)) {
    Arrange(*m_spin);
    m_spin->setRange(field.Least(), field.Most());
    connect(m_spin, &QSpinBox::valueChanged, this, [this](int value) {
      if (value != m_number.GetValue()) Enter(SInput::Value(std::int64_t{value}));
    });
  }
  QWidget& Editor() override { return *m_spin; }
  void Commit() override { m_spin->interpretText(); }
  void ShowValue() override { m_spin->setValue(m_number.GetValue()); }

 private:
  CIntegerEdit& m_number;
  QSpinBox* m_spin;
};

class CCheckView final : public CFieldView {
 public:
  CCheckView(CCheckBox& field, QWidget* parent, std::function<void()> entered)
      : CFieldView(field, parent, std::move(entered)), m_check(field), m_box(new QCheckBox(this)) {
    Arrange(*m_box);
    connect(m_box, &QCheckBox::clicked, this, [this](bool checked) { Enter(SInput::Value(checked)); });
  }
  QWidget& Editor() override { return *m_box; }
  bool HasOwnLabel() const override { return true; }
  void SetLabel(const QString& text) override {
    CFieldView::SetLabel(text);
    m_box->setText(text);
  }
  void ShowValue() override { m_box->setChecked(m_check.IsChecked()); }

 private:
  CCheckBox& m_check;
  QCheckBox* m_box;
};

class CChoiceView final : public CFieldView {
 public:
  CChoiceView(CComboBox& field, QWidget* parent, std::function<void()> entered)
      : CFieldView(field, parent, std::move(entered)), m_choice(field), m_combo(new QComboBox(this)) {
    Arrange(*m_combo);
    connect(m_combo, &QComboBox::activated, this, [this](int at) {
      const CComboItems items = m_choice.GetItems();
      if (at < 0 || static_cast<std::size_t>(at) >= items.size()) return;
      Enter(SInput::Value(OuterItemValue(items[static_cast<std::size_t>(at)], m_choice.Editor())));
    });
  }
  QWidget& Editor() override { return *m_combo; }
  void ShowValue() override {
    const CComboItems items = m_choice.GetItems();
    QStringList texts;
    QStringList shown;
    int current = -1;
    for (const SComboItem& item : items) {
      if (item.value == m_choice.GetValue() && current < 0) current = static_cast<int>(texts.size());
      texts += ToQt(item.text);
    }
    for (int at = 0; at < m_combo->count(); ++at) shown += m_combo->itemText(at);
    if (texts != shown) {
      m_combo->clear();
      m_combo->addItems(texts);
    }
    m_combo->setPlaceholderText(ToQt(m_choice.GetText()));  // a value that is not listed is shown, and kept
    m_combo->setCurrentIndex(current);
  }

 private:
  CComboBox& m_choice;
  QComboBox* m_combo;
};

class CColourView final : public CFieldView {
 public:
  CColourView(CColourComboBox& field, QWidget* parent, std::function<void()> entered)
      : CFieldView(field, parent, std::move(entered)), m_combo(new CColourCombo(this)) {
    Arrange(*m_combo);
    connect(m_combo, &CColourCombo::ColourChosen, this, [this] { Commit(); });
    connect(m_combo->lineEdit(), &QLineEdit::editingFinished, this, [this] { Commit(); });
  }
  QWidget& Editor() override { return *m_combo; }
  void SetLabel(const QString& text) override {
    CFieldView::SetLabel(text);
    m_combo->lineEdit()->setAccessibleName(PlainText(text));
  }
  void Commit() override {
    const CString typed = FromQt(m_combo->currentText());
    if (typed != Field().GetText()) Enter(SInput::Text(typed));
    m_combo->SetText(ToQt(Field().GetText()));
  }
  void ShowValue() override {
    if (!m_combo->lineEdit()->isModified()) m_combo->SetText(ToQt(Field().GetText()));
  }

 private:
  CColourCombo* m_combo;
};
}  // namespace

CFieldView* MakeFieldView(CFormField& field, QWidget* parent, std::function<void()> entered) {
  if (auto* const number = DynamicDowncast<CIntegerEdit>(&field))
    return new CNumberView(*number, parent, std::move(entered));
  if (auto* const check = DynamicDowncast<CCheckBox>(&field)) return new CCheckView(*check, parent, std::move(entered));
  if (auto* const combo = DynamicDowncast<CComboBox>(&field))
    return new CChoiceView(*combo, parent, std::move(entered));
  if (auto* const colour = DynamicDowncast<CColourComboBox>(&field))
    return new CColourView(*colour, parent, std::move(entered));
  return new CTextView(field, parent, std::move(entered));
}
