#!/bin/bash
# Every topic of the help is translated into every language of lang/, and each translation was made of the English topic
# as it is now: its line "english:" is the checksum of that file.
set -u
cd "$(dirname "$0")/.." || exit
status=0
for table in lang/*.json; do
  language=$(basename "$table" .json)
  for topic in help/topics/English/*; do
    translation=help/topics/$language/$(basename "$topic")
    sum=$(cksum <"$topic" | cut -d ' ' -f 1)
    if [ ! -f "$translation" ]; then
      echo "$translation is missing: the help in $language has this topic in English"
      status=1
    elif ! grep -qx "english: $sum" "$translation"; then
      echo "$translation was made of another English topic; see what has changed there, then let it say \"english: $sum\""
      status=1
    fi
  done
done
exit $status
