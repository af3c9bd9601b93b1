# quietly COMMAND...: runs the command, and shows its output only when it fails.
quietly() {
  local output status=0
  output=$(mktemp)
  "$@" >"$output" 2>&1 || status=$?
  [ "$status" -eq 0 ] || cat "$output" >&2
  rm -f "$output"
  return "$status"
}
