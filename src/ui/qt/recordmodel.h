// The records of one kind as a read-only table: a column for each field, and where each record is used.
//
// The table shows the design as it was when it was set; once the journal has moved on it shows nothing until it is set
// anew, because records may be gone.
#pragma once
#include <QAbstractTableModel>
#include <vector>

#include "model/design/technology.h"

class CRecordModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  explicit CRecordModel(const CTechnology& technology, QObject* parent = nullptr);

  /// Records of one kind; with `hasOwners` a first column names the record that owns each.
  void SetRecords(const CKind& kind, std::vector<CRecordBase*> records, bool hasOwners);
  /// Whether the design has changed since.
  bool IsStale() const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  void CollectUses();
  const CField* FieldAt(int column) const;  // null for the columns that are no fields
  QString TextAt(const QModelIndex& index) const;
  QString ValueText(const CField& field, const CRecordBase& record) const;

  const CTechnology& m_technology;
  const CKind* m_kind = nullptr;
  std::vector<CRecordBase*> m_records;
  std::vector<QString> m_uses;  // by record
  bool m_hasOwners = false;
  std::uint64_t m_shownAt = 0;  // revision of the journal
};
