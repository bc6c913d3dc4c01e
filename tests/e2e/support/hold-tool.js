// A host that starts the tool and then does nothing, until somebody ends it. Not every script host can sleep.
var tool = new ActiveXObject("QVRKvTARNCfg.LNSPlugInAPI");
tool.DeviceName = "held";
for (var end = new Date().getTime() + 30000; new Date().getTime() < end;);
