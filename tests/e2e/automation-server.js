// The tool as any script sees it: a process for each object, refusals with number and text, its end when its last user
// goes or dies, and its registration. Needs the tool registered; runs in Windows Script Host.
var shell = new ActiveXObject("WScript.Shell");
var wmi = new ActiveXObject("WbemScripting.SWbemLocator").ConnectServer();
var failures = 0;

function check(what, condition, found) {
  if (condition) return;
  failures++;
  WScript.Echo("FAILED: " + what + (found === undefined ? "" : ", found: " + found));
}

function equal(what, found, expected) {
  check(what + " should be " + expected, found === expected, found);
}

// Number and text of the error that `work` meets.
function errorOf(work) {
  try {
    work();
  } catch (error) {
    return { number: error.number, text: error.description || error.message };
  }
  return { number: 0, text: "no error" };
}

function tools() {
  return wmi.ExecQuery("SELECT * FROM Win32_Process WHERE Name='QVRKvTARNCfg.exe'").Count;
}

// Not every script host can sleep.
function waitForTools(what, count) {
  CollectGarbage();
  var end = new Date().getTime() + 10000;
  while (tools() !== count && new Date().getTime() < end);
  check(what + " within 10 s", tools() === count);
}

function registered(key) {
  try {
    return shell.RegRead("HKLM\\Software\\Classes\\" + key + "\\");
  } catch (error) {
    return null;
  }
}

function testOneProcessEach() {
  var first = new ActiveXObject("QVRKvTARNCfg.LNSPlugInAPI");
  first.networkname = "Geb\u00e4ude 7";  // names do not depend on case
  check("version", /^[1-9]\d*\.\d+\.\d+$/.test(first.version), first.version);
  var refused = errorOf(function () { first.Name = "x"; });
  equal("number of a refusal", refused.number | 0, 0x80040000 | 0);
  equal("text of a refusal", refused.text, "Attempt to write to read-only property");
  var second = new ActiveXObject("QVRKvTARNCfg.OVXPlugInAPI");
  var record = new ActiveXObject("QVRKvTARNCfg.CTransaction");
  equal("processes of three objects", tools(), 3);
  second.NetworkName = "other";
  second = record = null;
  waitForTools("their processes end with their objects", 1);
  equal("NetworkName of the first object", first.NetworkName, "Geb\u00e4ude 7");
  first = null;
  waitForTools("the first process ends with its object", 0);
}

function testKilledHost() {
  // Another script host than the one that runs this test, so that it can be ended by its name.
  shell.Run("wscript.exe //nologo tests\\e2e\\support\\hold-tool.js", 0, false);
  waitForTools("the host starts the tool", 1);
  shell.Run("taskkill.exe /f /im wscript.exe", 0, true);
  waitForTools("the tool ends with the host that was killed", 0);
}

function testRegistration() {
  var id = registered("QVRKvTARNCfg.LNSPlugInAPI\\CLSID");
  check("the tool is registered", id !== null);
  var server = registered("CLSID\\" + id + "\\LocalServer32");
  check("the server's path is quoted", /^".*\.exe"$/i.test(server), server);

  equal("exit code of -UnregServer", shell.Run(server + " -UnregServer", 0, true), 0);
  check("creating an unregistered tool", errorOf(function () { new ActiveXObject("QVRKvTARNCfg.LNSPlugInAPI"); }).number !== 0);

  equal("exit code of /RegServer", shell.Run(server + " /regserver", 0, true), 0);
  equal("class after it", registered("QVRKvTARNCfg.LNSPlugInAPI\\CLSID"), id);
  equal("exit code of a start without a switch", shell.Run(server, 0, true), 0);
}

try {
  equal("processes before the test", tools(), 0);
  testRegistration();
  testOneProcessEach();
  testKilledHost();
} catch (error) {
  check("the test itself", false, (error.number >>> 0).toString(16) + " " + error.message);
}
// Some script hosts pass over a faulty script in silence: only this line says that everything ran.
WScript.Echo(failures === 0 ? "all passed" : failures + " failed");
WScript.Quit(failures === 0 ? 0 : 1);
