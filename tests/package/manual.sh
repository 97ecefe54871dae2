# manual.sh FOLDER   Every page below the folder must be typeset without a warning.
export LC_ALL=C.UTF-8 MANROFFSEQ= MANWIDTH=80
mapfile -t pages < <(find "$1" -name '*.gz')
[ ${#pages[@]} -gt 0 ] || { echo "no page below $1"; exit 1; }
for page in "${pages[@]}"; do
  warnings=$(man --warnings -E UTF-8 -l -Tutf8 -Z "$page" 2>&1 >/dev/null) || { echo "$page: $warnings"; exit 1; }
  [ -z "$warnings" ] || { echo "$page: $warnings"; exit 1; }
done
