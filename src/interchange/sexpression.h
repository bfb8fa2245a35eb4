// Lists in brackets, the notation of board files: (at 10.5 -3 (layer "F.Cu")).
//
// A list begins with a bare word, its tag; words and further lists follow. Words with blanks, brackets or special
// characters stand in quotation marks, in which \n, \", \\ and the like are resolved; a quotation mark within a bare
// word (0.96") is a character of it. A line that begins with "#" is a comment. A text is read whole or not at all: a
// tree that exists is complete, and a size or depth out of the ordinary is a fault.
#pragma once
#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

#include "model/base/textfault.h"

class CSList;

/// One word or list of a tree, or none. A handle of two machine words, valid as long as its tree.
class CSNode {
 public:
  CSNode() = default;
  explicit operator bool() const { return m_tree != nullptr; }
  bool IsList() const;
  bool IsWord() const { return m_tree && !IsList(); }
  bool IsQuoted() const;
  std::string_view Text() const;  // of a word; empty for a list and for none
  std::string_view Tag() const;   // of a list; empty for a word and for none
  std::size_t At() const;         // where it begins in the text, in bytes

  /// The `index`-th (from 0) word or list behind the tag, or none.
  CSNode Value(std::size_t index) const;
  /// The first list of that tag among the values, or none.
  CSNode Find(std::string_view tag) const;

  class Iterator {
   public:
    Iterator(const CSList* tree, std::uint32_t index) : m_tree(tree), m_index(index) {}
    CSNode operator*() const { return {m_tree, m_index}; }
    Iterator& operator++();
    bool operator==(const Iterator&) const = default;

   private:
    const CSList* m_tree;
    std::uint32_t m_index;
  };
  /// The values of a list, without its tag. A word and none have no values.
  Iterator begin() const;
  Iterator end() const;

 private:
  friend class CSList;
  CSNode(const CSList* tree, std::uint32_t index) : m_tree(tree), m_index(index) {}
  const CSList* m_tree = nullptr;
  std::uint32_t m_index = 0;
};

/// A text in this notation, and the list that it consists of. The text must stay where it is.
class CSList {
 public:
  static constexpr std::size_t kMaxSize = std::size_t{256} << 20;  // bytes
  static constexpr std::size_t kMaxNodes = std::size_t{1} << 24;
  static constexpr std::size_t kMaxDepth = 64;

  /// Throws STextFault for a text that is not one complete list.
  explicit CSList(const CString& text);
  explicit CSList(CString&&) = delete;
  CSList(const CSList&) = delete;
  CSList& operator=(const CSList&) = delete;

  CSNode Root() const { return {this, 0}; }
  /// The bare words that hold a quotation mark, in the order of the text.
  const std::vector<std::string_view>& WordsWithMarks() const { return m_wordsWithMarks; }

 private:
  friend class CSNode;
  struct SNode {
    const char* word;      // null: a list
    std::uint32_t length;  // of the word
    std::uint32_t at;
    std::uint32_t end;  // the node behind this one and all it holds
  };
  void Read();
  void ReadQuoted(std::size_t& at);
  void AddNode(const char* word, std::size_t length, std::size_t at);
  std::string_view Resolve(std::string_view quoted, std::size_t wordAt);

  const CString& m_text;
  std::vector<SNode> m_nodes;  // each list before what it holds
  std::vector<std::string_view> m_wordsWithMarks;
  std::deque<CString> m_resolved;  // quoted words that had something to resolve
};
