# shellcheck shell=bash
# quietly COMMAND...: runs the command, and shows its output only when it fails.
quietly() (
  output=$(mktemp)
  trap 'rm -f "$output"' EXIT
  status=0
  "$@" >"$output" 2>&1 || status=$?
  [ "$status" -eq 0 ] || cat "$output" >&2
  exit "$status"
)
