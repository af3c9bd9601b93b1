# Where this machine gets Debian from.

debian_release() {
  (. /etc/os-release && echo "$VERSION_CODENAME")
}

# The main suite of the machine's release as a line of apt's sources, from what apt itself uses.
debian_source() {
  local release target mirror keyring
  release=$(debian_release)
  target=$(apt-get indextargets --format '$(REPO_URI) $(SIGNED_BY)' \
             'Created-By: Packages' "Codename: $release" 'Component: main' | head -n 1)
  read -r mirror keyring <<<"${target/'$(SIGNED_BY)'/}"
  if [ -z "${mirror-}" ]; then
    echo "apt knows no source of \"$release main\"; add one to /etc/apt and run: apt-get update" >&2
    return 1
  fi
  echo "deb ${keyring:+[signed-by=$keyring] }$mirror $release main"
}
