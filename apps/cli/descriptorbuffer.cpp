#include "cli/descriptorbuffer.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>

bool CDescriptorBuffer::Read(CString& text, std::size_t limit) {
  while (underflow() != traits_type::eof()) {
    text.append(gptr(), egptr());
    if (text.size() > limit) return false;
    setg(egptr(), egptr(), egptr());
  }
  return true;
}

void CDescriptorBuffer::Write(std::string_view text) {
  while (!text.empty() && m_error == 0) {
    const ssize_t written = ::write(m_descriptor, text.data(), std::min<std::size_t>(text.size(), 1U << 30));
    if (written > 0) {
      text.remove_prefix(static_cast<std::size_t>(written));
    } else if (written == 0 || errno != EINTR) {
      m_error = written == 0 ? ENOSPC : errno;
    }
  }
}

CDescriptorBuffer::int_type CDescriptorBuffer::underflow() {
  if (gptr() < egptr()) return traits_type::to_int_type(*gptr());
  ssize_t count = -1;
  while (m_error == 0 && (count = ::read(m_descriptor, m_read.data(), m_read.size())) < 0)
    if (errno != EINTR) m_error = errno;
  if (count <= 0) return traits_type::eof();
  setg(m_read.data(), m_read.data(), m_read.data() + count);
  return traits_type::to_int_type(*gptr());
}

CDescriptorBuffer::int_type CDescriptorBuffer::overflow(int_type c) {
  if (c != traits_type::eof()) m_written += traits_type::to_char_type(c);
  return m_error == 0 ? traits_type::not_eof(c) : traits_type::eof();
}

std::streamsize CDescriptorBuffer::xsputn(const char* text, std::streamsize size) {
  m_written.append(text, static_cast<std::size_t>(size));
  return size;
}

int CDescriptorBuffer::sync() {
  Write(m_written);
  m_written.clear();
  return m_error == 0 ? 0 : -1;
}
