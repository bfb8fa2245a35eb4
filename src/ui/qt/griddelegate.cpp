#include "ui/qt/griddelegate.h"

#include <QApplication>
#include <QCheckBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>

#include "ui/qt/colourcombo.h"
#include "ui/qt/decimalpoint.h"
#include "ui/qt/text.h"
#include "ui/qt/theme.h"

namespace {
EEditor EditorOf(const QModelIndex& index) { return static_cast<EEditor>(index.data(CGridModel::EditorRole).toInt()); }

bool IsNumber(EEditor editor) { return editor == EEditor::Length || editor == EEditor::Integer; }

/// A combo in a cell. A choice from its list ends the edit; choosing by keys, the list closed, goes on.
class CCellCombo : public QComboBox {
 public:
  using QComboBox::QComboBox;
  void showPopup() override {
    fromList = true;
    QComboBox::showPopup();
  }
  bool fromList = false;  // whether the list was open when an entry was chosen
  bool chosen = false;

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    fromList = false;
    QComboBox::keyPressEvent(event);
  }
};

/// Where a check box stands in its cell: in the middle.
QRect CheckRect(const QStyleOptionViewItem& option) {
  const QStyle* const style = option.widget ? option.widget->style() : QApplication::style();
  const QSize size = style->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, option.widget).size();
  const QSize least(style->pixelMetric(QStyle::PM_IndicatorWidth), style->pixelMetric(QStyle::PM_IndicatorHeight));
  return QStyle::alignedRect(option.direction, Qt::AlignCenter, size.expandedTo(least), option.rect);
}
}  // namespace

CGridDelegate::CGridDelegate(CGridFilter& filter, QObject* parent) : QStyledItemDelegate(parent), m_filter(filter) {}

CComboItems CGridDelegate::ItemsOf(const QModelIndex& index) const {
  const SGridPlace place = m_filter.PlaceOf(index);
  return m_filter.Model().Grid().Items(place.row, place.col);
}

// ---- Editors

QWidget* CGridDelegate::MakeCombo(QWidget* parent, const QModelIndex& index) const {
  auto* const combo = new CCellCombo(parent);
  for (const SComboItem& item : ItemsOf(index)) {
    const QVariant value(static_cast<qlonglong>(item.value));
    combo->addItem(item.text.empty() ? QtText(Text::NoChoice) : ToQt(item.text), value);
  }
  connect(combo, &QComboBox::activated, this, [this, combo] {
    combo->chosen = true;
    NoteEdit();
    if (combo->fromList) const_cast<CGridDelegate*>(this)->Finish(SubmitModelCache);
  });
  return combo;
}

QWidget* CGridDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex& index) const {
  const EEditor kind = EditorOf(index);
  QWidget* editor = nullptr;
  if (kind == EEditor::Choice || kind == EEditor::Object) {
    editor = MakeCombo(parent, index);
  } else if (kind == EEditor::Boolean) {
    auto* const check = new QCheckBox(parent);
    connect(check, &QCheckBox::clicked, this, [this] { NoteEdit(); });
    editor = check;
  } else if (kind == EEditor::Colour) {
    auto* const colours = new CColourCombo(parent);
    connect(colours, &CColourCombo::ColourChosen, this, [this] { NoteEdit(); });
    connect(colours->lineEdit(), &QLineEdit::textEdited, this, [this] { NoteEdit(); });
    editor = colours;
  } else {
    auto* const line = new QLineEdit(parent);
    connect(line, &QLineEdit::textEdited, this, [this] { NoteEdit(); });
    line->setFrame(false);
    line->setAlignment(index.data(Qt::TextAlignmentRole).value<Qt::Alignment>());
    editor = line;
  }
  editor->setAutoFillBackground(true);
  editor->setAccessibleName(m_filter.Model().ColumnName(index.column()));
  editor->setAccessibleDescription(index.data(CGridModel::ProblemRole).toString());
  m_editor = editor;
  m_refused = m_edited = false;
  return editor;
}

void CGridDelegate::NoteEdit() const {
  if (!std::exchange(m_edited, true)) onEdited();
}

void CGridDelegate::Forget() {
  m_editor = nullptr;
  if (std::exchange(m_edited, false)) onEdited();
}

void CGridDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
  const QString text = index.data(Qt::EditRole).toString();
  if (auto* const line = qobject_cast<QLineEdit*>(editor)) {
    line->setText(text);
  } else if (auto* const check = qobject_cast<QCheckBox*>(editor)) {
    check->setChecked(index.data(Qt::CheckStateRole).toInt() == Qt::Checked);
  } else if (auto* const colours = qobject_cast<CColourCombo*>(editor)) {
    colours->SetText(text);
    colours->lineEdit()->selectAll();
  } else if (auto* const combo = qobject_cast<QComboBox*>(editor)) {
    const SGridPlace place = m_filter.PlaceOf(index);
    const auto value = static_cast<qlonglong>(m_filter.Model().Grid().GetValue(place.row, place.col));
    combo->setPlaceholderText(text);  // of a value that the list does not offer
    combo->setCurrentIndex(combo->findData(value));
  }
}

bool CGridDelegate::ReadEditor(QWidget* editor, const QModelIndex& index, SInput& input) const {
  if (const auto* const line = qobject_cast<QLineEdit*>(editor)) {
    input = SInput::Text(FromQt(IsNumber(EditorOf(index)) ? WithDecimalPoint(line->text()) : line->text()));
    return line->isModified();
  }
  if (const auto* const check = qobject_cast<QCheckBox*>(editor)) {
    input = SInput::Value(check->isChecked());
    return check->isChecked() != (index.data(Qt::CheckStateRole).toInt() == Qt::Checked);
  }
  if (const auto* const colours = qobject_cast<CColourCombo*>(editor)) {
    input = SInput::Text(FromQt(colours->currentText().trimmed()));
    return colours->currentText() != index.data(Qt::EditRole).toString();
  }
  const auto* const combo = static_cast<CCellCombo*>(editor);
  const std::int64_t value = combo->currentData().toLongLong();
  if (EditorOf(index) == EEditor::Choice) {
    input = SInput::Value(value);
  } else {
    input = value ? SInput::Text(FromQt(combo->currentText())) : SInput::Value(CValue());
  }
  return combo->chosen && combo->currentIndex() >= 0;
}

void CGridDelegate::setModelData(QWidget* editor, QAbstractItemModel*, const QModelIndex& index) const {
  SInput input = SInput::Value(CValue());
  m_refused = ReadEditor(editor, index, input) && !onEnter(index, input);
}

bool CGridDelegate::Finish(EndEditHint hint) {
  const QPointer<QWidget> editor = m_editor;
  if (!editor) return true;
  emit commitData(editor);
  if (m_refused) return false;
  if (editor) emit closeEditor(editor, hint);
  return true;
}

void CGridDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                         const QModelIndex& index) const {
  QStyleOptionViewItem cell = option;
  initStyleOption(&cell, index);
  editor->setGeometry(qobject_cast<QCheckBox*>(editor) ? CheckRect(cell) : option.rect);
}

bool CGridDelegate::eventFilter(QObject* object, QEvent* event) {
  if (object == m_editor && event->type() == QEvent::KeyPress) {
    switch (static_cast<QKeyEvent*>(event)->key()) {
      case Qt::Key_Return:
      case Qt::Key_Enter: Finish(SubmitModelCache); return true;
      case Qt::Key_Tab: Finish(EditNextItem); return true;
      case Qt::Key_Backtab: Finish(EditPreviousItem); return true;
      case Qt::Key_Escape: m_refused = false; break;
      default: break;
    }
  }
  return QStyledItemDelegate::eventFilter(object, event);
}

bool CGridDelegate::editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                                const QModelIndex& index) {
  if (EditorOf(index) != EEditor::Boolean) return QStyledItemDelegate::editorEvent(event, model, option, index);
  if (event->type() != QEvent::MouseButtonRelease && event->type() != QEvent::MouseButtonDblClick) return false;
  const auto* const mouse = static_cast<QMouseEvent*>(event);
  QStyleOptionViewItem cell = option;
  initStyleOption(&cell, index);
  const bool isHit = CheckRect(cell).contains(mouse->position().toPoint());
  // The release toggles; a double click brings two of them.
  if (isHit && event->type() == QEvent::MouseButtonRelease && mouse->button() == Qt::LeftButton &&
      mouse->modifiers() == Qt::NoModifier)
    onToggle(index);
  return isHit || event->type() == QEvent::MouseButtonDblClick;
}

// ---- Painting

void CGridDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  option->decorationAlignment = Qt::AlignCenter;
  option->textElideMode = Qt::ElideRight;
  if (option->features & QStyleOptionViewItem::HasDecoration) {
    const auto colour = index.data(Qt::DecorationRole).value<QColor>();
    if (colour.isValid()) option->icon = CColourCombo::Swatch(colour, option->palette);
  }
  if (!(index.flags() & Qt::ItemIsEditable)) {  // told apart without colour as well
    constexpr double kShade = 0.06;
    option->font.setItalic(true);
    option->backgroundBrush =
        Mixed(option->palette.color(QPalette::Base), option->palette.color(QPalette::Text), kShade);
  }
}

void CGridDelegate::PaintCheckBox(QPainter* painter, const QStyleOptionViewItem& option) const {
  const QStyle* const style = option.widget ? option.widget->style() : QApplication::style();
  QStyleOptionViewItem check = option;
  check.rect = CheckRect(option);
  check.state &= ~QStyle::State_HasFocus;
  check.state |= option.checkState == Qt::Checked ? QStyle::State_On : QStyle::State_Off;
  style->drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &check, painter, option.widget);
}

void CGridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  QStyleOptionViewItem cell = option;
  initStyleOption(&cell, index);
  const QString problem = index.data(CGridModel::ProblemRole).toString();
  const QColor problemColour = problem.isEmpty() ? QColor() : ProblemText(option.palette.color(QPalette::Base));
  if (!problem.isEmpty()) cell.text = QStringLiteral("! ") + cell.text;
  const QStyle* const style = option.widget ? option.widget->style() : QApplication::style();
  const bool isCheck = EditorOf(index) == EEditor::Boolean;
  QStyleOptionViewItem ground = cell;
  if (isCheck) ground.features &= ~QStyleOptionViewItem::HasCheckIndicator;
  if (!problem.isEmpty() && !(cell.state & QStyle::State_Selected))
    ground.palette.setColor(QPalette::Text, problemColour);
  style->drawControl(QStyle::CE_ItemViewItem, &ground, painter, option.widget);
  if (isCheck) {
    if (!(index.flags() & Qt::ItemIsEditable)) cell.state &= ~QStyle::State_Enabled;
    PaintCheckBox(painter, cell);
  }
  painter->save();
  painter->setBrush(Qt::NoBrush);
  if (!problem.isEmpty()) {
    painter->setPen(QPen(problemColour, 2));
    painter->drawRect(option.rect.adjusted(1, 1, -1, -1));
  } else if (option.state & QStyle::State_HasFocus) {
    const bool isSelected = option.state & QStyle::State_Selected;
    painter->setPen(option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text));
    painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
  }
  painter->restore();
}
