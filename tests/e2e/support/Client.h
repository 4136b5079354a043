// A client of the automation class: late bound by name or identifier, as scripts are, with all it can see of
// the outcome.
#pragma once
#include "win32/automation/Com.h"
#include <string>
#include <utility>
#include <vector>

namespace e2e {

// A VARIANT that looks after itself.
class Var {
 public:
  Var() { VariantInit(&v); }
  Var(const Var& other) : Var() { VariantCopy(&v, const_cast<VARIANT*>(&other.v)); }
  Var& operator=(const Var& other) { return VariantCopy(&v, const_cast<VARIANT*>(&other.v)), *this; }
  ~Var() { VariantClear(&v); }
  static Var i2(short n);
  static Var i4(long n);
  static Var r4(float n);
  static Var r8(double n);
  static Var text(const std::wstring& t);
  static Var boolean(bool b);
  static Var null();
  static Var missing();
  static Var byRef(long& n);
  static Var byRef(Var& other); // VT_BYREF | VT_VARIANT, as a script's variable
  VARIANT v;
};

struct Reply {
  HRESULT code = S_OK; // the error's own code when the member failed
  std::wstring source, text;
  Var value;
  VARTYPE type() const { return V_VT(&value.v); }
  double number() const; // of a numeric value
  std::wstring string() const;
  bool ok() const { return SUCCEEDED(code); }
};

class Client {
 public:
  Client(); // creates the object; starts the panel when none runs
  static HRESULT tryCreate(IDispatch** object);
  explicit Client(IDispatch* object) : object_(object) {}
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;
  Client(Client&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  ~Client();

  HRESULT creation() const { return creation_; }
  IDispatch* object() const { return object_; }
  INMRLock* early() const;              // the caller releases it; null: not to be had
  DISPID id(const wchar_t* name) const; // DISPID_UNKNOWN: no such member
  Reply invoke(DISPID id, WORD flags, std::vector<Var> arguments = {}) const; // first argument first
  Reply call(const wchar_t* name, std::vector<Var> arguments = {}) const;
  Reply get(const wchar_t* name) const;
  Reply put(const wchar_t* name, const Var& value) const;

 private:
  Reply invoke(DISPID id, WORD flags, std::vector<Var>& arguments, bool named) const;
  IDispatch* object_ = nullptr;
  HRESULT creation_ = S_OK;
};

} // namespace e2e
