#!/usr/bin/env bash
# Installs the packages of a list that are missing, of tools/packages.txt unless another is named; root is needed only
# when some are.
set -euo pipefail

wanted=$(sed 's/#.*//' "${1:-$(dirname "${BASH_SOURCE[0]}")/packages.txt}" | xargs)
installed=$(dpkg-query -W -f='${Package} ${db:Status-Status}\n' | sed -n 's/ installed$//p')
missing=$(comm -23 <(tr ' ' '\n' <<<"$wanted" | sort -u) <(sort -u <<<"$installed"))
[ -n "$missing" ] || exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo >/dev/null || { echo "Run as root, once: apt-get install" $missing >&2; exit 1; }
  as_root=(sudo)
fi
echo "Installing:" $missing
"${as_root[@]}" apt-get update -q
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -qy --no-install-recommends $missing
