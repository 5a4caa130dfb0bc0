#!/usr/bin/env bash
# Tries a package: check_package.sh FILE.deb
# What Debian, AppStream and the desktop say of it; then, in a clean system of its own, whether it installs, starts, opens a file by its type, and
# goes without a rest. The last part needs the package archive, and root or user namespaces.
set -euo pipefail
package=$(realpath "$1")
here=$(cd "$(dirname "$0")/.." && pwd)

step() { echo "=== $*"; }

step "lintian"
lintian --allow-root --fail-on error --suppress-tags bad-distribution-in-changes-file "$package"
step "desktop entry and AppStream data"
content=$(mktemp -d)
trap 'rm -rf "$content"' EXIT
dpkg-deb -x "$package" "$content"
desktop-file-validate "$content"/usr/share/applications/*.desktop
appstreamcli validate --no-net "$content"/usr/share/metainfo/*.xml

cat >"$content/inside.sh" <<'END'
set -eu
export DEBIAN_FRONTEND=noninteractive
list() { find / -xdev \( -path /proc -o -path /sys -o -path /tmp -o -path /root -o -path /var/cache -o -path /var/lib/apt -o -path /var/lib/dpkg -o -path /var/log \) -prune -o -print | sort; }
apt-get install -y -qq --no-install-recommends $(dpkg-deb -f /tmp/vantrelo.deb Depends | sed 's/([^)]*)//g; s/|[^,]*//g; s/,/ /g') >/dev/null
list >/tmp/before
dpkg -i /tmp/vantrelo.deb >/dev/null
vantrelo --version
vantrelo --export /tmp/picture.png /usr/share/vantrelo/examples/corundum_cuka.xye
test -s /tmp/picture.png
type=$(xdg-mime query filetype /usr/share/vantrelo/examples/corundum_cuka.xye)
program=$(xdg-mime query default "$type")
echo "$type opens with $program"
test "$program" = vantrelo.desktop
test -s "/usr/share/icons/hicolor/48x48/apps/vantrelo.png"
xvfb-run -a sh -c 'gio open /usr/share/vantrelo/examples/corundum_cuka.xye; for i in 1 2 3 4 5 6 7 8 9 10; do sleep 1; pgrep -af "^vantrelo .*corundum_cuka.xye" && break; done; pkill -x vantrelo'
dpkg --purge vantrelo >/dev/null
list >/tmp/after
diff /tmp/before /tmp/after && echo "nothing is left of it"
END
step "a clean system"
. /etc/os-release
mmdebstrap --quiet --variant=apt --include=xvfb,xauth,xdg-utils,shared-mime-info,desktop-file-utils,hicolor-icon-theme,libglib2.0-bin,procps,libfile-mimeinfo-perl \
    --customize-hook="copy-in $content/inside.sh /tmp" --customize-hook="upload '$package' /tmp/vantrelo.deb" \
    --customize-hook='chroot "$1" sh /tmp/inside.sh' "$VERSION_CODENAME" /dev/null
echo "=== the package holds"
