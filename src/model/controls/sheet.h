// Tabbed sheets and their pages.
//
// A page is filled when it is first shown. OK and Apply go through the shown pages in sheet order, modified or not;
// each checks and writes by itself, the first refusal makes its page the active one and ends the run, and OK stays open
// then.
#pragma once
#include "model/controls/dialog.h"

class CPropertySheetPlus;

class CPropertyPagePlus : public CPanel {
  TECHSHEET_CLASS(CPropertyPagePlus, CPanel)
  /// `title` is the text identifier on the tab.
  explicit CPropertyPagePlus(CTextId title) : m_title(title) {}

  CString GetTitle() const override { return TextOf(m_title); }
  void SetTitle(CTextId title) { m_title = title; }
  bool IsShown() const { return m_shown; }  // has been shown since the sheet opened
  bool IsModified() const { return m_modified; }
  CPropertySheetPlus* Sheet() const { return m_sheet; }

  /// Fills the page; called once, when it is first shown.
  virtual void OnInitDialog() {}
  /// Called whenever the page becomes active.
  virtual void OnSetActive() {}
  /// Checks and writes; false when something was refused, which has been reported by then.
  virtual bool OnApply() { return true; }
  virtual void OnDestroy() {}

 protected:
  void SetModified(bool modified = true);
  /// At once when something has been written: Cancel can no longer take it back.
  void CancelToClose();
  // What a page may say of its controls when it is resized. Every view lays them out by itself, so nothing is kept.
  void AdjustControl(const CString& /*control*/, bool /*moveX*/, bool /*moveY*/, bool /*sizeX*/, bool /*sizeY*/) {}
  void MoveControl(const CString& /*control*/, bool /*x*/, bool /*y*/) {}
  void ResizeControl(const CString& /*control*/, bool /*x*/, bool /*y*/) {}

 private:
  friend class CPropertySheetPlus;
  CTextId m_title;
  CPropertySheetPlus* m_sheet = nullptr;
  bool m_shown = false;
  bool m_modified = false;
};

class CPropertySheetPlus : public CDialog {
  TECHSHEET_CLASS(CPropertySheetPlus, CDialog)
  explicit CPropertySheetPlus(CTextId caption, int initialPage = 0);

  void AddPage(CPropertyPagePlus* page);
  const std::vector<CPropertyPagePlus*>& Pages() const { return m_pages; }
  /// Makes the page of that class active; false, and nothing changed, when the sheet has none.
  bool SetPage(const CRuntimeClass* pageClass);
  bool SetPage(std::string_view className);
  CPropertyPagePlus* GetActivePage() const { return m_active < m_pages.size() ? m_pages[m_active] : nullptr; }
  std::size_t GetActiveIndex() const { return m_active; }
  CPanel& ActivePanel() override;
  bool IsModified() const;
  /// Whether a page refused the last OK or Apply.
  bool IsRefused() const override { return m_refused; }
  /// The page that is being checked or written behind the active one, or null: what it says is about nothing that can
  /// be seen.
  const CPropertyPagePlus* GetSpeakingPage() const;
  /// The text of the button that ends the dialog without writing: "Cancel", or "Close" once something was written, or
  /// nothing is left to be.
  bool IsCloseShown() const { return m_close; }
  void CancelToClose() { m_close = true; }

  /// The active page under `key`, by its class name.
  void SaveActivePage(const CString& key) const;
  void RestoreActivePage(const CString& key);
  /// The key under which views keep the sheet's size, as the value "Size" ("width,height" in pixels).
  void SetSizeRegistryKey(const CString& key) { m_sizeKey = key; }
  const CString& GetSizeRegistryKey() const { return m_sizeKey; }

 protected:
  void OnInitDialog() override;
  void OnDestroy() override;
  void OnOk() override;
  virtual bool ApplyPages();

 private:
  void Activate(std::size_t index);
  std::vector<CPropertyPagePlus*> m_pages;
  std::size_t m_active;
  const CPropertyPagePlus* m_applied = nullptr;  // while its turn is
  CString m_sizeKey;
  bool m_close = false;
  bool m_refused = false;
};
