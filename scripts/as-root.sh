# shellcheck shell=bash
# as_root COMMAND...: runs the command as root, through sudo unless this is root.
as_root() {
  if [ "$(id -u)" -eq 0 ]; then
    "$@"
  elif command -v sudo >/dev/null; then
    sudo "$@"
  else
    echo "This needs root, and there is no sudo: $*" >&2
    return 1
  fi
}
