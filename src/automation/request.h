// Requests: one line of a script, read and checked against what its operation takes.
//
// A request that was read holds exactly arguments that its operation knows, each of the type of its name, and all that
// must be there; so what carries it out need not ask.
#pragma once
#include <map>
#include <span>

#include "model/base/result.h"
#include "model/controls/value.h"

/// An argument of any depth, as `items` and `args` hold them.
struct SArgument {
  CValue scalar;                         // none for a list and an object
  std::vector<SArgument> list;           // of a list
  std::map<CString, SArgument> members;  // of an object
  enum class EForm { Scalar, List, Object } form = EForm::Scalar;

  const CString* Text() const { return std::get_if<CString>(&scalar); }
  const std::int64_t* Integer() const { return std::get_if<std::int64_t>(&scalar); }
  /// The member of that name, or null.
  const SArgument* Member(const CString& name) const;
};

/// Where an operation may be used.
enum class EPlace { Anywhere, OutsideDialogs, InDialog };

class CRequest;
class CAutomation;

struct SOperation {
  const char* name;
  EPlace place;
  std::vector<const char*> arguments;                    // names, with "?" behind those that may be absent
  CString (CAutomation::*run)(const CRequest& request);  // empty, or why nothing was done
};

class CRequest {
 public:
  static constexpr std::size_t kMaxLength = 16 << 20;  // bytes of a line

  /// Fails with what is wrong in the line: no JSON object, deeper than 64, a name that occurs twice, an unknown
  /// operation, an argument that is unknown, missing or of a wrong type.
  static CResult<CRequest> Read(const CString& line, std::span<const SOperation> operations);

  const SOperation& Operation() const { return *m_operation; }
  bool Has(const CString& name) const { return m_arguments.contains(name); }
  const SArgument& Argument(const CString& name) const { return m_arguments.at(name); }
  const CString& Text(const CString& name) const { return *Argument(name).Text(); }
  CString TextOr(const CString& name, const CString& absent) const { return Has(name) ? Text(name) : absent; }
  int Integer(const CString& name) const { return static_cast<int>(*Argument(name).Integer()); }
  CStringArray Texts(const CString& name) const;
  std::vector<int> Integers(const CString& name) const;

 private:
  const SOperation* m_operation = nullptr;
  std::map<CString, SArgument> m_arguments;
};
