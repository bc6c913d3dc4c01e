#include "com_support.h"

#include "base/error.h"
#include "platform/win32/com/apartment.h"
#include "platform/win32/com/com_object.h"
#include "platform/win32/com/local_dispatch.h"

namespace com_test {
namespace {

constexpr UINT kWork = WM_APP + 1;

Value Fail(Box&, const Arguments& list) {
  if (list.Count() == 0) throw base::Error("The tool itself failed.");
  throw automation::Error(static_cast<std::uint32_t>(list[0].AsReal()), list[1].AsText(), list[2].AsText());
}

Value Reach(Box& box, const Arguments& list) {
  // Calls back into an object of the caller while the caller waits for this answer.
  const automation::Object other = list[0].AsObject();
  other.Put("Content", box.content);
  return other.Get("Content");
}

Value Wait(Box&, const Arguments& list) {
  Sleep(static_cast<DWORD>(list[0].AsWhole()));
  return {};
}

Value MakeBox(const Value& content) {
  const auto box = std::make_shared<Box>();
  box->content = content;
  return automation::Object(box);
}

}  // namespace

const automation::MemberOf<Box> Box::kMembers[8] = {
    {"Content", [](Box& box, const Arguments&) { return box.content; },
     [](Box& box, const Value& value) { box.content = value; }},
    {"Fixed", [](Box&, const Arguments&) { return Value(7); }},
    {.name = "Join",
     .call = [](Box&, const Arguments& list) { return Value(list[0].AsText() + "|" + list[1].AsText()); }},
    {.name = "Fail", .call = Fail},
    {"Item", [](Box&, const Arguments& list) { return MakeBox("item " + list[0].AsText()); }},
    {"Inner", [](Box&, const Arguments&) { return MakeBox("inner"); }},
    {.name = "Reach", .call = Reach},
    {.name = "Wait", .call = Wait},
};

HRESULT ForeignObject::GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) {
  ++lookUps_;
  const HRESULT result = inner_->GetIDsOfNames(id, names, count, locale, ids);
  if (SUCCEEDED(result)) ids[0] += shift_;
  return result;
}

HRESULT ForeignObject::Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,
                              VARIANT* result, EXCEPINFO* exception, UINT* argument) {
  const HRESULT status =
      inner_->Invoke(id - shift_, iid, locale, flags, parameters, result, exception, argument);
  if (SUCCEEDED(status) && result && result->vt == VT_DISPATCH && result->pdispVal) {
    result->pdispVal = new ForeignObject(win32::ComPtr<IDispatch>(result->pdispVal), lookUps_, shift_);
  }
  return status;
}

void WriteDefault(REGSAM view, const std::string& key, const std::string& text) {
  win32::RegistryKey opened;
  RegCreateKeyExW(HKEY_LOCAL_MACHINE, win32::Wide(key).c_str(), 0, nullptr, 0, KEY_SET_VALUE | view, nullptr,
                  opened.Put(), nullptr);
  const std::wstring wide = win32::Wide(text);
  RegSetValueExW(opened.Get(), nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(wide.c_str()),
                 static_cast<DWORD>(2 * wide.size() + 2));
}

OtherApartment::OtherApartment() {
  const win32::Handle ready(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  thread_ = std::thread([this, &ready] { Loop(ready.Get()); });
  WaitForSingleObject(ready.Get(), INFINITE);
}

OtherApartment::~OtherApartment() {
  PostThreadMessageW(threadId_, WM_QUIT, 0, 0);
  thread_.join();
}

void OtherApartment::Loop(HANDLE ready) {
  const win32::ComApartment apartment;
  MSG message;
  PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);  // makes the queue
  threadId_ = GetCurrentThreadId();
  SetEvent(ready);
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    if (message.message == kWork && !message.hwnd) {
      (*reinterpret_cast<const std::function<void()>*>(message.lParam))();
      SetEvent(reinterpret_cast<HANDLE>(message.wParam));
    }
    DispatchMessageW(&message);
  }
}

void OtherApartment::Run(const std::function<void()>& work) {
  const win32::Handle done(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  PostThreadMessageW(threadId_, kWork, reinterpret_cast<WPARAM>(done.Get()), reinterpret_cast<LPARAM>(&work));
  HANDLE wanted = done.Get();
  DWORD place = 0;
  CoWaitForMultipleHandles(0, INFINITE, 1, &wanted, &place);
}

automation::Object OtherApartment::MakeBox() {
  win32::ComPtr<IStream> stream;
  Run([&] {
    const auto dispatch = win32::ToDispatch(automation::Object(std::make_shared<Box>()));
    CoMarshalInterThreadInterfaceInStream(__uuidof(IDispatch), dispatch.Get(), stream.Put());
  });
  void* proxy = nullptr;
  CoGetInterfaceAndReleaseStream(stream.Release(), __uuidof(IDispatch), &proxy);
  return win32::FromDispatch(win32::ComPtr<IDispatch>(static_cast<IDispatch*>(proxy)).Get());
}

}  // namespace com_test
