// Reports of long operations: problems are collected and shown together.
#pragma once
#include <utility>
#include <vector>

#include "model/base/catalogue.h"
#include "model/base/object.h"

/// One problem: its identifier and values for scripts, and what people read.
struct SReportLine {
  CTextId id{};  // 0 for a ready text
  CStringArray args{};
  CString text{};
};

class CReportFile {
 public:
  /// `title` is the text identifier of the report's title; `design` is what it is about, or null.
  CReportFile(const CObject* design, CTextId title) : m_design(design), m_title(title) {}

  void Open() { m_lines.clear(); }
  template <class... Args>
  void Write(CTextId id, const Args&... args) {
    WriteText(id, {CString(args)...});
  }
  void WriteText(CTextId id, const CStringArray& args) { WriteShown(id, args, TextOf(id, args)); }
  /// The same where people are told more than the values say.
  void WriteShown(CTextId id, CStringArray args, CString text) {
    m_lines.push_back({id, std::move(args), std::move(text)});
  }
  void WriteLine(const CString& text) { m_lines.push_back({{}, {}, text}); }
  void Close() {}
  /// Shows the report when it holds at least one line.
  void View() const;

  const CObject* Design() const { return m_design; }
  CTextId Title() const { return m_title; }
  const std::vector<SReportLine>& Lines() const { return m_lines; }
  bool HasProblems() const { return !m_lines.empty(); }

 private:
  const CObject* m_design;
  CTextId m_title;
  std::vector<SReportLine> m_lines;
};
