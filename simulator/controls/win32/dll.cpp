// Entry points of the control library: its classes and their registration. The library stays loaded until its
// process ends, because its window classes stay registered and must not lose their code.
#include <windows.h>
// After windows.h, which it needs.
#include <olectl.h>

#include <vector>

#include "SimControls.h"
#include "platform/win32/com/registration.h"
#include "simulator/controls/about.h"
#include "simulator/controls/actuator.h"
#include "simulator/controls/object_manager.h"
#include "simulator/controls/sensor_hardware.h"
#include "simulator/controls/sensor_variable.h"
#include "simulator/controls/win32/ole_control.h"

namespace simcontrols {
namespace {

template <class Kind>
MadeControl Make() {
  const auto control = std::make_shared<Kind>();
  return {control, automation::Object(control)};
}

const std::vector<ControlClass>& Classes() {
  static const std::vector<ControlClass> classes = {
      {CLSID_ctlSensorNV, DIID__Editor, "MVConfigSensor.ctlSensorNV",
       "Virtual building: type of an input's network variable", Make<controls::SensorVariable>},
      {CLSID_ctlSensorHardware, DIID__Editor, "MVConfigSensor.ctlSensorHardware",
       "Virtual building: sensor of an input", Make<controls::SensorHardware>},
      {CLSID_ctlConfigActuator, DIID__Editor, "MVConfigActuator.ctlConfigActuator",
       "Virtual building: actuator of an output", Make<controls::Actuator>},
      {CLSID_ObjectManager, DIID__ObjectManager, "MVSingleObjectManager.ObjectManager",
       "Virtual building: objects of a device", Make<controls::ObjectManager>},
      {CLSID_About, DIID__About, "MVAbout.About", "Virtual building: about a tool", Make<controls::About>},
  };
  return classes;
}

std::vector<win32::ServerClass> ServerClasses() {
  std::vector<win32::ServerClass> served;
  for (const ControlClass& entry : Classes())
    served.push_back({entry.classId, {entry.programId}, entry.name, {}, {}, true});
  return served;
}

class Factory : public win32::ComClass<IClassFactory> {
 public:
  explicit Factory(const ControlClass& controlClass) : class_(controlClass) {}

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** object) override {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (outer) return CLASS_E_NOAGGREGATION;
    try {
      const win32::ComPtr<OleControl> control(new OleControl(class_, class_.make()));
      return control->QueryInterface(id, object);
    } catch (const std::bad_alloc&) {
      return E_OUTOFMEMORY;
    } catch (const std::exception&) {
      return E_FAIL;
    }
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

 private:
  const ControlClass& class_;
};

template <class Work>
HRESULT Attempt(Work work) {
  try {
    work(ServerClasses(), kTypeLibrary);
    return S_OK;
  } catch (const std::exception&) {
    return SELFREG_E_CLASS;
  }
}

}  // namespace
}  // namespace simcontrols

STDAPI DllGetClassObject(REFCLSID classId, REFIID id, void** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  for (const simcontrols::ControlClass& entry : simcontrols::Classes()) {
    if (entry.classId != classId) continue;
    const win32::ComPtr<simcontrols::Factory> factory(new simcontrols::Factory(entry));
    return factory->QueryInterface(id, object);
  }
  return CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() { return S_FALSE; }

STDAPI DllRegisterServer() { return simcontrols::Attempt(win32::RegisterServer); }

STDAPI DllUnregisterServer() { return simcontrols::Attempt(win32::UnregisterServer); }
