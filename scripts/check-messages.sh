#!/bin/bash
# Every message that the help explains must be one of the program, in the language of the topic: each piece of a <dt>
# between "…" must stand in a text of the sources or of the language's table. Other terms are explained in lists too, so
# only <dl class="messages"> counts.
set -u
cd "$(dirname "$0")/.." || exit

# All sources with the texts that are broken over several lines joined again; many texts are the same in all languages.
sources=$(find src simulator \( -name '*.cpp' -o -name '*.h' \) -exec cat {} + |
  sed -z 's/"[[:space:]]*\n[[:space:]]*"//g; s/\\"/"/g')
status=0
for folder in help/topics/*; do
  table=lang/${folder##*/}.json
  texts=$([ ! -f "$table" ] || sed 's/\\"/"/g' "$table")$sources
  for topic in "$folder"/*; do
    while IFS= read -r piece; do
      [ -z "$piece" ] || grep -qF -- "$piece" <<<"$texts" || {
        echo "$topic: the program does not say: $piece"
        status=1
      }
    done < <(awk '/^<dl class="messages">/ { on = 1 } /^<\/dl>/ { on = 0 } on' "$topic" |
      sed -n 's/^<dt>\(.*\)<\/dt>$/\1/p' | sed 's/[   ]*…[   ]*/\n/g; s/&quot;/"/g; s/&amp;/\&/g' |
      sed 's/^, \?//; s/^or \(.*\)/or \1/; s/^[.]$//')
  done
done
exit $status
