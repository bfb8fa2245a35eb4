#include "ui/qt/recordmodel.h"

#include <QColor>
#include <map>
#include <unordered_map>

#include "model/design/fieldtext.h"
#include "ui/qt/text.h"

namespace {
constexpr int kWhereUsed = 1;  // the columns behind the fields
}  // namespace

CRecordModel::CRecordModel(const CTechnology& technology, QObject* parent)
    : QAbstractTableModel(parent), m_technology(technology) {}

bool CRecordModel::IsStale() const { return m_shownAt != m_technology.Journal().Revision(); }

void CRecordModel::SetRecords(const CKind& kind, std::vector<CRecordBase*> records, bool hasOwners) {
  beginResetModel();
  m_kind = &kind;
  m_records = std::move(records);
  m_hasOwners = hasOwners;
  m_shownAt = m_technology.Journal().Revision();
  CollectUses();
  endResetModel();
}

/// One walk over the references of the design, whatever the number of records: a single use by name, several counted.
void CRecordModel::CollectUses() {
  struct SUse {
    std::size_t count = 0;
    const CRecordBase* first = nullptr;
  };
  std::unordered_map<const CRecordBase*, std::map<CTextId, SUse>> uses;  // by the title of the kind that uses
  for (const CRecordBase* record : m_records)
    if (record->UseCount() > 0) uses.try_emplace(record);
  if (!uses.empty()) {
    m_technology.ForEachReference([&](CRecordBase& owner, const CField& field, CRecordBase& target) {
      const auto at = uses.find(&target);
      if (at == uses.end() || field.type->reference == EReference::Part) return;
      SUse& use = at->second[owner.Kind().title];
      if (use.count++ == 0) use.first = &owner;
    });
  }
  m_uses.assign(m_records.size(), {});
  for (std::size_t i = 0; i < m_records.size(); ++i) {
    QStringList parts;
    const auto at = uses.find(m_records[i]);
    if (at == uses.end()) continue;
    for (const auto& [title, use] : at->second) {
      const bool isNamed = use.count == 1 && !use.first->RecordName().empty();
      parts << (isNamed ? QtText(Text::KindAndName, {TextOf(title), use.first->RecordName()})
                        : QtText(Text::KindAndCount, {TextOf(title), IntText(static_cast<std::int64_t>(use.count))}));
    }
    m_uses[i] = parts.join(", ");
  }
}

int CRecordModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(m_records.size());
}

int CRecordModel::columnCount(const QModelIndex& parent) const {
  if (parent.isValid() || !m_kind) return 0;
  return static_cast<int>(m_kind->fields.size()) + (m_hasOwners ? 1 : 0) + kWhereUsed;
}

const CField* CRecordModel::FieldAt(int column) const {
  const int field = column - (m_hasOwners ? 1 : 0);
  return field >= 0 && field < static_cast<int>(m_kind->fields.size())
             ? &m_kind->fields[static_cast<std::size_t>(field)]
             : nullptr;
}

QVariant CRecordModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (!m_kind || (role != Qt::DisplayRole && role != Qt::AccessibleTextRole)) return {};
  if (orientation == Qt::Vertical) return section + 1;
  const CField* const field = FieldAt(section);
  if (!field) return m_hasOwners && section == 0 ? QtText(Text::Owner) : QtText(Text::WhereUsed);
  if (field->type->fieldClass != EFieldClass::Length) return QtText(field->title);
  return QtText(Text::WithDetail, {TextOf(field->title), CUnits::Suffix(m_technology.GetUnits()->GetType())});
}

QVariant CRecordModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || IsStale()) return {};
  const CField* const field = FieldAt(index.column());
  switch (role) {
    case Qt::DisplayRole: return TextAt(index);
    case Qt::ToolTipRole: return ToolTip(TextAt(index));
    case Qt::AccessibleTextRole:
      return headerData(index.column(), Qt::Horizontal, Qt::DisplayRole).toString() + ": " + TextAt(index);
    case Qt::TextAlignmentRole:
      return QVariant::fromValue((field && IsQuantity(*field->type) ? Qt::AlignRight : Qt::AlignLeft) |
                                 Qt::AlignVCenter);
    case Qt::DecorationRole:
      if (!field || field->type->fieldClass != EFieldClass::Colour) return {};
      return QColor::fromRgb(field->As<CColour>(m_records[static_cast<std::size_t>(index.row())]->FieldsAddress()).rgb);
    default: return {};
  }
}

QString CRecordModel::TextAt(const QModelIndex& index) const {
  const auto row = static_cast<std::size_t>(index.row());
  const CRecordBase& record = *m_records[row];
  if (const CField* const field = FieldAt(index.column())) return ValueText(*field, record);
  if (m_hasOwners && index.column() == 0) {
    const CRecordBase* named = record.Owner();
    while (named && named->RecordName().empty() && named->Owner()) named = named->Owner();
    return named ? ToQt(named->RecordName()) : QString();
  }
  if (!m_uses[row].isEmpty()) return m_uses[row];
  return CTechnology::IsUsed(record) ? QString() : QtText(Text::NotUsed);
}

QString CRecordModel::ValueText(const CField& field, const CRecordBase& record) const {
  const QString text = ToQt(FieldText(field, record, *m_technology.GetUnits()));
  return field.type->fieldClass == EFieldClass::Text ? text.simplified() : text;  // free texts may have several lines
}
