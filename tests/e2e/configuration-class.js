// The class for scripts as scripts use it, and the examples of the documentation, each a client of its own. Needs the tool
// and the building registered; runs in Windows Script Host.
var shell = new ActiveXObject("WScript.Shell");
var files = new ActiveXObject("Scripting.FileSystemObject");
var failures = 0;
var network = "Harbour Street 12", address = "127.0.0.1", port = 2540, block = 1;
var programs = files.GetAbsolutePathName(shell.ExpandEnvironmentStrings("%PROGRAMS%"));
var folder = programs + "\\scripts", examples = files.GetAbsolutePathName("docs\\examples");

function check(what, condition, found) {
  if (condition) return;
  failures++;
  WScript.Echo("FAILED: " + what + (found === undefined ? "" : ", found: " + found));
}

function errorOf(work) {
  try {
    work();
  } catch (error) {
    return error.description || error.message;
  }
  return "no error";
}

function run(example, words) {
  var engine = 'cscript.exe //nologo "' + examples + "\\" + example + '" "';
  return shell.Run(engine + network + '" ' + address + " " + port + " " + block + " " + words, 0, true);
}

try {
  // The building puts the common files beside itself when it starts; where they are is known only while it runs.
  shell.Run(programs + "\\SimHost.exe --script tests\\e2e\\support\\units.sim", 0, true);
  shell.RegWrite("HKLM\\SOFTWARE\\LonWorks\\LonWorks Path", programs + "\\data\\LonWorks");
  if (files.FolderExists(folder)) files.DeleteFolder(folder);
  files.CreateFolder(folder);
  var file = folder + "\\one.kvtarn";

  var tool = new ActiveXObject("QVRKvTARNCfg.Configuration");
  check("nothing open", errorOf(function () { tool.Value("PID", "txtPIDTemp(0)"); }) === "No unit is open.");
  tool.Open(network, address, port, "RTU-1 North wing", block);
  var units = new VBArray(tool.Units).toArray();
  check("units", units.length === 4 && units[0] === "RTU-1 North wing", units.join(", "));
  var gain = tool.Value("PID", "Space Temperature, Proportional Gain");
  check("value", gain === "25.0000", gain);
  tool.Value("fPID", "txtPIDTemp(0)") = 30.5;
  check("applied", tool.Apply() === 1);
  tool.Save(file);
  var refused = errorOf(function () { tool.Value("Outputs", "Output 3, Usage") = "UNASSIGNED"; });
  check("a refused input in words", refused.indexOf("COOLING_2 selected") > 0, refused);

  tool.Open(network, address, port, "RTU-3 Laboratory", block);
  var lines = new VBArray(tool.Compare(file)).toArray();
  check("differences", lines.length > 20, lines.length);
  check("page, field, here, there", new VBArray(lines[0]).toArray().length === 4);
  tool.Record(folder + "\\record.html");
  check("a record", files.FileExists(folder + "\\record.html"));
  tool.Close();

  // One file for all units that match; a name without a folder is meant in the script's own.
  shell.CurrentDirectory = folder;
  check("apply-to-units", run("apply-to-units.js", 'one.kvtarn "^RTU-[23]"') === 0);
  tool.Open(network, address, port, "RTU-3 Laboratory", block);
  check("only the location differs", new VBArray(tool.Compare(file)).toArray().length === 1);
  check("stored", tool.Value("fPID", "txtPIDTemp(0)") === "30.5000", tool.Value("fPID", "txtPIDTemp(0)"));
  tool.Close();

  // The whole network in a folder; the unit with an old program cannot be read, and is told by the result.
  check("back-up-network", run("back-up-network.vbs", "network") === 1);
  check("one file for each unit", files.GetFolder(folder + "\\network").Files.Count === 3);
  check("its name", files.FileExists(folder + "\\network\\RTU-1 North wing.kvtarn"));
  tool = null;
  CollectGarbage();
} catch (error) {
  check("the test itself", false, (error.number >>> 0).toString(16) + " " + error.message);
}
WScript.Echo(failures === 0 ? "all passed" : failures + " failed");
