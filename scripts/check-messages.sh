#!/bin/bash
# Every message that the help explains must be one of the program: each piece of a <dt> between "…" must stand in a
# text of the sources. Other terms are explained in lists too, so only those below a heading "Messages", "When ..." or
# "Other" count.
set -u
cd "$(dirname "$0")/.." || exit

# All sources with the texts that are broken over several lines joined again.
sources=$(find src simulator \( -name '*.cpp' -o -name '*.h' \) -exec cat {} + |
  sed -z 's/"[[:space:]]*\n[[:space:]]*"//g; s/\\"/"/g')
status=0
for topic in help/topics/*; do
  while IFS= read -r piece; do
    [ -z "$piece" ] || grep -qF -- "$piece" <<<"$sources" || {
      echo "$topic: the program does not say: $piece"
      status=1
    }
  done < <(awk '/^<h2>/ { on = /Messages|When|Other/ } on' "$topic" | sed -n 's/^<dt>\(.*\)<\/dt>$/\1/p' |
    sed 's/ *… */\n/g; s/&quot;/"/g; s/&amp;/\&/g' | sed 's/^, \?//; s/^or \(.*\)/or \1/; s/^\.$//')
done
exit $status
