# Prints one value of all units of a network as a table.
#
# powershell -File value-table.ps1 -Network NAME -Address 10.0.0.1 -Port 1628 -Page PID `
#   -Field "Space Temperature, Proportional Gain"
param(
  [Parameter(Mandatory)] [string] $Network,
  [Parameter(Mandatory)] [string] $Address,
  [Parameter(Mandatory)] [int] $Port,
  [int] $Block = 1,
  [Parameter(Mandatory)] [string] $Page,
  [Parameter(Mandatory)] [string] $Field
)
$tool = New-Object -ComObject QVRKvTARNCfg.Configuration
$tool.Open($Network, $Address, $Port, "", $Block)
$table = foreach ($unit in $tool.Units) {
  try {
    $tool.Open($Network, $Address, $Port, $unit, $Block)
    [pscustomobject]@{ Unit = $unit; Value = $tool.Value($Page, $Field); Remark = "" }
  } catch {
    [pscustomobject]@{ Unit = $unit; Value = ""; Remark = $_.Exception.Message }
  }
}
$tool.Close()
$table | Format-Table -AutoSize
