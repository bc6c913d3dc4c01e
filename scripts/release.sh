#!/bin/bash
# Makes build/release/KV-TARN-Configuration-VERSION.zip: the installer with its checksum, the manual as pages for any
# browser, the examples of scripts, and the licences of everything linked in.
set -u
cd "$(dirname "$0")/.." || exit
. scripts/common.sh
begin "Make the release"
name=KV-TARN-Configuration-$(scripts/version.sh)
folder=build/release/$name

# The manual in each language, without what only the help files are made of.
cp_manual() {
  local language
  for language in $(ls help/topics); do
    mkdir -p "$folder/manual/$language" &&
      cp build/help/"$language"/*.{html,css,png} "$folder/manual/$language" || return
  done
}

pack() {
  local changed
  changed=$(git log -1 --format=%ct) || return
  rm -rf "$folder" "$folder.zip"
  mkdir -p "$folder/manual" "$folder/licences"
  cp build/installer/"$name".exe "$folder" &&
    cp_manual &&
    cp -r docs/examples "$folder" &&
    scripts/licences.sh "$folder/licences" &&
    (cd "$folder" && sha256sum ./*.exe >SHA256SUMS) || return
  # The same content makes the same archive: names in order, times of the last change of the sources.
  find "$folder" -exec touch -d "@$changed" {} +
  (cd build/release && find "$name" -type f | LC_ALL=C sort | TZ=UTC zip -q -X -9 -@ "$name.zip" && sha256sum "$name.zip" >"$name.zip.sha256")
}

scripts/manual.sh && scripts/installer.sh && step "Pack $folder.zip" release pack
finish $?
