# Makes the table of `make bench` from lines "WHAT MEASURED AGAINST CALLS". Where there is something to measure against,
# the fastest of both are compared, since whatever else runs on the machine only ever adds time; of the others it is the
# median. The variable `warm` is how many values of each are left out at first. Exits with 1 when a limit is missed.
function least(list, count,    i, found) {
  found = list[1]
  for (i = 2; i <= count; i++) if (list[i] < found) found = list[i]
  return found
}

function median(list, count,    i, j, kept) {
  for (i = 2; i <= count; i++)
    for (j = i; j > 1 && list[j] < list[j - 1]; j--) {
      kept = list[j]
      list[j] = list[j - 1]
      list[j - 1] = kept
    }
  return list[int((count + 1) / 2)]
}

# What calls the host may cost a tenth more than its calls; copying to many units a quarter, which is backups and
# records. A page comes at once, and the process and all within two seconds.
function limit(what) {
  if (what ~ /^(load|refresh|apply|units|dry-run|again)$/) return 1.10
  if (what == "copy") return 1.25
  if (what ~ /^page/) return 100
  if (what == "activation") return 2000
  return 2.5
}

++seen[$1] > warm {
  if (!($1 in count)) order[++kinds] = $1
  n = ++count[$1]
  time[$1, n] = $2
  alone[$1, n] = $3
  calls[$1] = $4
}

END {
  printf "%-12s %6s %10s %10s %8s %10s\n", "", "calls", "measured", "against", "ratio", "limit"
  for (k = 1; k <= kinds; k++) {
    what = order[k]
    n = count[what]
    for (i = 1; i <= n; i++) {
      a[i] = time[what, i]
      b[i] = alone[what, i]
    }
    against = least(b, n)
    measured = against > 0 ? least(a, n) : median(a, n)
    share = against > 0 ? measured / against : 0
    missed = (share > 0 ? share : measured) > limit(what)
    printf "%-12s %6d %10.1f %10.1f %8.2f %10.2f%s\n", what, calls[what], measured, against, share, limit(what),
      missed ? "  OVER" : ""
    over += missed
  }
  exit over > 0
}
