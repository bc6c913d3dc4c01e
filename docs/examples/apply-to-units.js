// Gives one configuration file to all units whose name matches a pattern.
//
// cscript //nologo apply-to-units.js NETWORK ADDRESS PORT BLOCK FILE PATTERN
//
// PATTERN is a regular expression without regard to case: "^AHU 1" takes AHU 1, AHU 10, ... Each unit is saved in one
// transaction after its former values were kept as a backup. A unit that refuses the file or cannot be reached is
// named, and stays as it was; the script ends with 1 then.
var words = WScript.Arguments;
if (words.length !== 6) {
  WScript.Echo("usage: apply-to-units.js NETWORK ADDRESS PORT BLOCK FILE PATTERN");
  WScript.Quit(2);
}
var network = words.Item(0), address = words.Item(1), port = Number(words.Item(2)), block = Number(words.Item(3));
var pattern = new RegExp(words.Item(5), "i");
// The tool is a process of its own, with another present folder.
var file = new ActiveXObject("Scripting.FileSystemObject").GetAbsolutePathName(words.Item(4));

var tool = new ActiveXObject("QVRKvTARNCfg.Configuration");
tool.Open(network, address, port, "", block);
var units = new VBArray(tool.Units).toArray();
var failed = 0, done = 0;
for (var i = 0; i < units.length; i++) {
  if (!pattern.test(units[i])) continue;
  try {
    tool.Open(network, address, port, units[i], block);
    var count = tool.Apply(file);
    WScript.Echo(units[i] + ": " + (count === 0 ? "nothing to change" : count + " values written"));
    done++;
  } catch (error) {
    WScript.Echo(units[i] + ": " + (error.description || error.message));
    failed++;
  }
}
tool.Close();
WScript.Echo(done + " units done, " + failed + " failed");
WScript.Quit(failed > 0 ? 1 : 0);
