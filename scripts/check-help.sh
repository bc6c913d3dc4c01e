#!/bin/bash
# usage: check-help.sh FILE PROJECT
#
# Checks the compiled help FILE: every topic number of PROJECT leads to the page that PROJECT names, and that page is in
# the file.
set -u
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
file=$(realpath "$1")
project=$(realpath "$2")
cd "$folder" && chmls extractall "$file" . >/dev/null || exit

# #IVB holds its length and then pairs of numbers, little-endian: the topic, and where its page stands in #STRINGS.
declare -A pages
read -r -a numbers < <(od -An -v -t u4 -w1000000 '#IVB')
for ((i = 1; i + 1 < ${#numbers[@]}; i += 2)); do
  pages[${numbers[i]}]=$(tail -c "+$((numbers[i + 1] + 1))" '#STRINGS' | head -c 200 | tr '\0' '\n' | head -n 1)
done

status=0
count=0
while IFS='=' read -r name page; do
  count=$((count + 1))
  found=${pages[${name#TOPIC_}]:-nothing}
  [ "${found#/}" = "$page" ] && [ -f "$page" ] || {
    echo "topic ${name#TOPIC_} leads to $found, not to $page"
    status=1
  }
done < <(grep '^TOPIC_' "$project")
[ $count -gt 0 ] || status=1
echo "$count topic numbers"
exit $status
