// The fields of forms. A field has a name by which scripts and views know it, a label, and a value of one kind.
#pragma once
#include <functional>

#include "model/base/object.h"
#include "model/controls/value.h"
#include "model/design/values.h"
#include "model/services/apperror.h"

class CFormField : public CObject, public CFocusable {
  TECHSHEET_CLASS(CFormField, CObject)
  /// `label` is the text identifier of what stands beside the field.
  CFormField(const char* name, CTextId label) : m_name(name), m_label(label) {}

  const char* Name() const { return m_name; }
  CTextId Label() const { return m_label; }
  void SetLabel(CTextId label) { m_label = label; }
  virtual const char* KindName() const = 0;  // "text", "length", "integer", "check", "combo", "colour", "label"
  virtual CString GetText() const = 0;
  virtual CValue GetOuterValue() const { return GetText(); }
  virtual CComboItems GetItems() const { return {}; }
  /// What stands behind the number ("mm"), empty without a unit.
  virtual CString GetUnit() const { return {}; }
  /// Whether the text is made of numbers, so that a comma in it can only be a decimal one.
  virtual bool IsNumber() const { return false; }

  /// What a person does to the field. False, and nothing changed, with the reason in `why`, while it is disabled or
  /// hidden, or when it cannot take the input.
  bool Enter(const SInput& input, CString& why);

  bool IsEnabled() const { return m_enabled; }
  void Enable(bool enabled) { m_enabled = enabled; }
  bool IsVisible() const { return m_visible; }
  void Show(bool visible) { m_visible = visible; }
  bool IsModified() const { return m_modified; }
  void SetModified(bool modified) { m_modified = modified; }
  bool HasFocus() const { return Focused() == this; }
  void SetFocus() override { Focused() = this; }
  void SetChangeHandler(std::function<void()> handler) { m_changed = std::move(handler); }
  ~CFormField() override {
    if (HasFocus()) Focused() = nullptr;
  }

 protected:
  virtual bool Take(const SInput& input, CString& why) = 0;

 private:
  static const CFormField*& Focused();
  const char* m_name;
  CTextId m_label;
  std::function<void()> m_changed;
  bool m_enabled = true;
  bool m_visible = true;
  bool m_modified = false;
};

class CEdit : public CFormField {
  TECHSHEET_CLASS(CEdit, CFormField)
  using CFormField::CFormField;
  const char* KindName() const override { return "text"; }
  CString GetText() const override { return m_text; }
  void SetText(const CString& text) { m_text = text; }

 protected:
  bool Take(const SInput& input, CString& why) override;

 private:
  CString m_text;
};

/// A text that cannot be edited.
class CLabel : public CEdit {
  TECHSHEET_CLASS(CLabel, CEdit)
  CLabel(const char* name, CTextId label) : CEdit(name, label) { Enable(false); }
  const char* KindName() const override { return "label"; }
};

/// A whole number with a spin control. A number outside the range is limited to it; any other text is refused.
class CIntegerEdit : public CFormField {
  TECHSHEET_CLASS(CIntegerEdit, CFormField)
  CIntegerEdit(const char* name, CTextId label, int least, int most)
      : CFormField(name, label), m_least(least), m_most(most), m_value(least) {}
  const char* KindName() const override { return "integer"; }
  CString GetText() const override { return IntText(m_value); }
  CValue GetOuterValue() const override { return std::int64_t{m_value}; }
  int GetValue() const { return m_value; }
  void SetValue(int value);
  int Least() const { return m_least; }
  int Most() const { return m_most; }

 protected:
  bool Take(const SInput& input, CString& why) override;

 private:
  int m_least;
  int m_most;
  int m_value;
};

class CCheckBox : public CFormField {
  TECHSHEET_CLASS(CCheckBox, CFormField)
  using CFormField::CFormField;
  const char* KindName() const override { return "check"; }
  CString GetText() const override { return {}; }
  CValue GetOuterValue() const override { return m_checked; }
  bool IsChecked() const { return m_checked; }
  void Check(bool checked) { m_checked = checked; }

 protected:
  bool Take(const SInput& input, CString& why) override;

 private:
  bool m_checked = false;
};

/// A closed list. A value that is not listed stays shown and kept, and cannot be chosen.
class CComboBox : public CFormField {
  TECHSHEET_CLASS(CComboBox, CFormField)
  CComboBox(const char* name, CTextId label, EEditor editor) : CFormField(name, label), m_editor(editor) {}
  const char* KindName() const override { return "combo"; }
  CString GetText() const override { return m_text; }
  CValue GetOuterValue() const override;
  CComboItems GetItems() const override { return m_items; }
  EEditor Editor() const { return m_editor; }
  void SetItems(CComboItems items) { m_items = std::move(items); }
  std::int64_t GetValue() const { return m_value; }
  /// `text` is shown for the value; without one that of the item.
  void SetValue(std::int64_t value, const CString& text = {});

 protected:
  bool Take(const SInput& input, CString& why) override;

 private:
  EEditor m_editor;
  CComboItems m_items;
  std::int64_t m_value = 0;
  CString m_text;
};

/// A colour; any can be given, the items are those offered.
class CColourComboBox : public CFormField {
  TECHSHEET_CLASS(CColourComboBox, CFormField)
  using CFormField::CFormField;
  const char* KindName() const override { return "colour"; }
  CString GetText() const override { return ColourText(m_colour); }
  CComboItems GetItems() const override;
  CColour GetColour() const { return m_colour; }
  void SetColour(CColour colour) { m_colour = colour; }

 protected:
  bool Take(const SInput& input, CString& why) override;

 private:
  CColour m_colour;
};

/// The colours that colour combos offer.
CComboItems PaletteItems();
