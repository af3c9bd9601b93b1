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

# quietly_with_percent TEXT COMMAND...: the same for a command that builds with ninja: shows the text and the percentage, on a terminal in one line, else a line each quarter.
quietly_with_percent() (
  text=$1
  export NINJA_STATUS='[%p] '
  shift
  output=$(mktemp)
  trap 'rm -f "$output"' EXIT
  terminal=0
  [ ! -t 2 ] || terminal=1
  "$@" 2>&1 | tee "$output" | awk -v text="$text" -v terminal="$terminal" '
    !/Re-checking globbed directories/ && match($0, /^\[ *[0-9]+%\]/) {
      percent = substr($0, 2, RLENGTH - 3) + 0
      if (terminal) printf "\r%s %d %%", text, percent
      else if (!said || percent >= next_quarter) print text, percent, "%"
      else next
      said = 1
      next_quarter = 25 * (int(percent / 25) + 1)
      fflush()
    }
    END { if (terminal && said) print "" }' >&2 && status=0 || status=${PIPESTATUS[0]}
  [ "$status" -eq 0 ] || cat "$output" >&2
  exit "$status"
)
