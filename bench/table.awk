# Makes the table of `make bench` from lines "WHAT MEASURED AGAINST CALLS": medians and their limits, of the ratio where
# there is one. The variable `warm` is how many values of each are left out at first. Exits with 1 when a limit is missed.
function median(list, count,    i, j, kept) {
  for (i = 2; i <= count; i++)
    for (j = i; j > 1 && list[j] < list[j - 1]; j--) {
      kept = list[j]
      list[j] = list[j - 1]
      list[j - 1] = kept
    }
  return list[int((count + 1) / 2)]
}

# What calls the host may cost a tenth more than its calls; other units a fifth, since every value and unit in view is
# drawn anew; copying to many units a quarter, which is backups and records. A page comes at once, and the process and
# all within two seconds.
function limit(what) {
  if (what ~ /^(load|refresh|apply|dry-run|again)$/) return 1.10
  if (what == "units") return 1.20
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
  ratio[$1, n] = $3 > 0 ? $2 / $3 : 0
  calls[$1] = $4
}

END {
  printf "%-12s %6s %10s %10s %8s %10s\n", "medians", "calls", "measured", "against", "ratio", "limit"
  for (k = 1; k <= kinds; k++) {
    what = order[k]
    n = count[what]
    for (i = 1; i <= n; i++) {
      a[i] = time[what, i]
      b[i] = alone[what, i]
      c[i] = ratio[what, i]
    }
    measured = median(a, n)
    share = median(c, n)
    missed = (share > 0 ? share : measured) > limit(what)
    printf "%-12s %6d %10.1f %10.1f %8.2f %10.2f%s\n", what, calls[what], measured, median(b, n), share, limit(what),
      missed ? "  OVER" : ""
    over += missed
  }
  exit over > 0
}
