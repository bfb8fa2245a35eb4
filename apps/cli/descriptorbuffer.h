// Standard input and output that say why they fail, which the streams of the library do not.
#pragma once
#include <array>
#include <streambuf>

#include "model/base/text.h"

/// Reads from or writes to a descriptor that is open, and stays open. The first error stays: from then on the input has
/// ended, and nothing more is written.
class CDescriptorBuffer final : public std::streambuf {
 public:
  explicit CDescriptorBuffer(int descriptor) : m_descriptor(descriptor) {}

  /// The number of the error of the system that ended it; 0: none.
  int Error() const { return m_error; }

  /// Appends all that is left to `text`; false when that is more than `limit` bytes.
  bool Read(CString& text, std::size_t limit);
  void Write(std::string_view text);

 protected:
  int_type underflow() override;
  int_type overflow(int_type c) override;
  std::streamsize xsputn(const char* text, std::streamsize size) override;
  int sync() override;

 private:
  int m_descriptor;
  int m_error = 0;
  std::array<char, 65536> m_read{};
  CString m_written;  // since the last sync
};
