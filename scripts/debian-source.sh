# shellcheck shell=bash
# Finds the source from which this machine installs Debian. Needs as-root.sh.

debian_release() {
  (. /etc/os-release && echo "$VERSION_CODENAME")
}

# Prints "URI entry" of the release's main suite, as apt uses it; the entry is its place in the sources,
# "file:line".
debian_main_suite() {
  apt-get indextargets --format '$(REPO_URI) $(SOURCESENTRY)' \
    'Created-By: Packages' "Codename: $(debian_release)" 'Component: main' | grep -v '^cdrom:' | head -n 1
}

# Prints the keyring that an entry of apt's sources names; nothing for apt's default keyrings.
keyring_of() {
  local file=${1%:*} line=${1##*:}
  case $file in
    *.sources) awk -v line="$line" -v RS= '{ n += split($0, lines, "\n") + 1 } n >= line { print; exit }' "$file" |
                 sed -n 's|^Signed-By: *\(/.*\)|\1|ip' ;;
    *) sed -n "${line}s|.*signed-by=\(/[^] ]*\).*|\1|p" "$file" ;;
  esac
}

# Prints the main suite of the machine's release as a line for apt's sources.
debian_source() {
  local suite keyring
  suite=$(debian_main_suite)
  if [ -z "$suite" ]; then
    # A fresh machine has no package lists.
    as_root apt-get update >&2
    suite=$(debian_main_suite)
  fi
  if [ -z "$suite" ]; then
    echo "apt knows no source of \"$(debian_release) main\"; add one to /etc/apt, see sources.list(5)" >&2
    return 1
  fi
  keyring=$(keyring_of "${suite#* }")
  echo "deb ${keyring:+[signed-by=$keyring] }${suite%% *} $(debian_release) main"
}
