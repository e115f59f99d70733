#!/usr/bin/env bash
# Prepare everything needed to run 32-bit ARM (armhf) binaries that embed a
# Java VM, on an x86-64 Debian host, under qemu-user.
#
#   tools/armhf-runtime.sh <cache-dir>
#
# Under <cache-dir> (normally inside the build folder) this creates:
#
#   debs/      the downloaded armhf .deb files; kept as a cache, so that a
#              second run downloads nothing
#   root/      the .debs unpacked with dpkg-deb -x; the JDK lives in
#              root/usr/lib/jvm/java-17-openjdk-armhf
#   sysroot/   the folder to pass to qemu-arm as -L / QEMU_LD_PREFIX: the
#              ARM dynamic loader and libc/libstdc++ from the cross
#              toolchain packages, plus the unpacked zlib
#   env.sh     "export JAVA_HOME=... QEMU_LD_PREFIX=..." for shells
#
# On success the script prints exactly two lines on stdout, for callers that
# want to parse them (CMake does):
#
#   JAVA_HOME=<cache-dir>/root/usr/lib/jvm/java-17-openjdk-armhf
#   QEMU_LD_PREFIX=<cache-dir>/sysroot
#
# Everything else goes to stderr. The script is safe to run again and again:
# each step is skipped when its result is already in place, and concurrent
# runs on the same <cache-dir> are serialised with a lock.
#
# Host requirements (installed with apt-get when running as root, otherwise
# the script says what to install and fails):
#   g++-arm-linux-gnueabihf  cross compiler; pulls in libc6-armhf-cross,
#                            libstdc++6-armhf-cross and libgcc-s1-armhf-cross,
#                            whose /usr/arm-linux-gnueabihf/lib is the ARM
#                            runtime used by the sysroot
#   qemu-user                provides /usr/bin/qemu-arm
# and the armhf architecture enabled in dpkg with up-to-date package lists,
# so that the armhf .debs can be downloaded.

set -euo pipefail

readonly JDK_NAME=java-17-openjdk-armhf
readonly JDK_ETC=/etc/java-17-openjdk
readonly CROSS_LIB=/usr/arm-linux-gnueabihf/lib
# Debian packages (armhf) to unpack into root/.
readonly ARM_PACKAGES=(openjdk-17-jre-headless zlib1g)
# Host packages the cross build and the qemu runs need.
readonly HOST_PACKAGES=(g++-arm-linux-gnueabihf qemu-user)

log() { printf 'armhf-runtime: %s\n' "$*" >&2; }
die() { printf 'armhf-runtime: error: %s\n' "$*" >&2; exit 1; }

usage() {
    cat >&2 <<EOF
usage: $0 <cache-dir>

Downloads and unpacks an armhf OpenJDK 17 runtime and builds a qemu-arm
library prefix under <cache-dir>. See the header of this script for details.
EOF
    exit 2
}

[[ $# -eq 1 && -n $1 ]] || usage
case $1 in -h|--help) usage ;; esac

mkdir -p -- "$1"
CACHE_DIR=$(cd -- "$1" && pwd -P)
readonly CACHE_DIR
readonly DEB_DIR=$CACHE_DIR/debs
readonly ROOT_DIR=$CACHE_DIR/root
readonly SYSROOT_DIR=$CACHE_DIR/sysroot
readonly JAVA_HOME_DIR=$ROOT_DIR/usr/lib/jvm/$JDK_NAME

is_root() { [[ $(id -u) -eq 0 ]]; }

# Serialise concurrent runs (parallel configures, several build trees sharing
# one cache). fd 9 stays open until the script exits.
exec 9>"$CACHE_DIR/.lock"
flock 9

# Run apt-get non-interactively; as root, do not try to drop privileges to
# the _apt user (it usually cannot write into a build folder, and apt then
# warns on every download).
apt_get() {
    if is_root; then
        DEBIAN_FRONTEND=noninteractive apt-get -o APT::Sandbox::User=root "$@"
    else
        apt-get "$@"
    fi
}

# apt-get update fails as a whole when a single index cannot be fetched (a
# mirror in the middle of a sync, say), even though everything we need may
# have arrived. Callers re-check what they actually need afterwards.
apt_update() {
    log "running apt-get update"
    apt_get update -q >&2 || log "apt-get update reported errors; checking whether what we need is there anyway"
}

# ---------------------------------------------------------------------------
# 1. Host tools: cross compiler, ARM runtime libraries, qemu-arm.
# ---------------------------------------------------------------------------

pkg_installed() {
    [[ $(dpkg-query -W -f='${Status}' "$1" 2>/dev/null) == "install ok installed" ]]
}

check_host_packages() {
    local missing=() p
    for p in "${HOST_PACKAGES[@]}"; do
        pkg_installed "$p" || missing+=("$p")
    done
    # The packages can be present while the files we rely on are not (a
    # partial removal, for instance): check the files too and name the
    # package that ships each of them.
    [[ -e $CROSS_LIB/ld-linux-armhf.so.3 && -e $CROSS_LIB/libc.so.6 ]] || missing+=(libc6-armhf-cross)
    [[ -e $CROSS_LIB/libstdc++.so.6 ]] || missing+=(libstdc++6-armhf-cross)
    [[ -e $CROSS_LIB/libgcc_s.so.1 ]] || missing+=(libgcc-s1-armhf-cross)
    command -v qemu-arm >/dev/null || missing+=(qemu-user)
    command -v arm-linux-gnueabihf-g++ >/dev/null || missing+=(g++-arm-linux-gnueabihf)

    ((${#missing[@]} == 0)) && return 0
    # Drop duplicates, keep the order.
    local -A seen=()
    local unique=()
    for p in "${missing[@]}"; do
        [[ -n ${seen[$p]:-} ]] || { seen[$p]=1; unique+=("$p"); }
    done

    if ! is_root; then
        die "missing host packages. Install them with:
    sudo apt-get install --no-install-recommends ${unique[*]}"
    fi
    log "installing host packages: ${unique[*]}"
    if ! apt_get install -y -q --no-install-recommends "${unique[@]}" >&2; then
        apt_update
        apt_get install -y -q --no-install-recommends "${unique[@]}" >&2 \
            || die "could not install ${unique[*]}"
    fi
}

# ---------------------------------------------------------------------------
# 2. The armhf .debs, cached in debs/.
# ---------------------------------------------------------------------------

cached_deb() {
    # Prints the cached .deb of package $1, if any (newest name wins).
    compgen -G "$DEB_DIR/${1}_*_armhf.deb" | sort -V | tail -n 1 || true
}

armhf_downloadable() {
    apt-get download --print-uris "${@/%/:armhf}" >/dev/null 2>&1
}

ensure_armhf_available() {
    local wanted=("$@")
    armhf_downloadable "${wanted[@]}" && return 0

    if ! is_root; then
        local how=""
        if ! dpkg --print-foreign-architectures | grep -qx armhf; then
            how="sudo dpkg --add-architecture armhf && "
        fi
        die "the armhf packages ${wanted[*]} cannot be downloaded. Enable them with:
    ${how}sudo apt-get update"
    fi
    if ! dpkg --print-foreign-architectures | grep -qx armhf; then
        log "enabling the armhf architecture in dpkg"
        dpkg --add-architecture armhf
    fi
    apt_update
    armhf_downloadable "${wanted[@]}" \
        || die "the armhf packages ${wanted[*]} still cannot be downloaded after apt-get update"
}

download_debs() {
    local missing=() p
    for p in "${ARM_PACKAGES[@]}"; do
        [[ -n $(cached_deb "$p") ]] || missing+=("$p")
    done
    if ((${#missing[@]} == 0)); then
        log "using cached packages in $DEB_DIR"
        return 0
    fi

    ensure_armhf_available "${missing[@]}"
    # Download into a scratch folder and move the files in only once all of
    # them arrived, so an interrupted run never leaves a half-written .deb in
    # the cache.
    local tmp
    tmp=$(mktemp -d "$CACHE_DIR/debs.partial.XXXXXX")
    log "downloading ${missing[*]} (armhf)"
    if ! (cd "$tmp" && apt_get download -q "${missing[@]/%/:armhf}" >&2); then
        rm -rf -- "$tmp"
        die "apt-get download failed"
    fi
    mkdir -p "$DEB_DIR"
    mv -f -- "$tmp"/*.deb "$DEB_DIR"/
    rm -rf -- "$tmp"
}

# ---------------------------------------------------------------------------
# 3. Unpack into root/ and repair the JDK's links into /etc.
# ---------------------------------------------------------------------------

# The JDK package keeps its configuration in /etc/java-17-openjdk and points
# at it with absolute symlinks (lib/jvm.cfg, conf/security/java.security, ...).
# Unpacked outside /, those links would either dangle or, worse, silently
# resolve to the host's amd64 JDK configuration. Replace each of them with a
# copy of the file unpacked from the same package.
fix_etc_links() {
    local link target local_file count=0
    while IFS= read -r -d '' link; do
        target=$(readlink -- "$link")
        [[ $target == "$JDK_ETC"/* ]] || continue
        local_file=$ROOT_DIR$target
        [[ -f $local_file ]] || die "$link points to $target, which the package did not ship"
        cp --remove-destination -- "$local_file" "$link"
        count=$((count + 1))
    done < <(find "$JAVA_HOME_DIR" -type l -print0)
    log "replaced $count links into $JDK_ETC with the unpacked files"

    # Debian names the VM configuration after the architecture; the generic
    # loop above covered it, but the VM refuses to start without it, so make
    # sure it really is the armhf one.
    [[ -f $JAVA_HOME_DIR/lib/jvm.cfg && ! -L $JAVA_HOME_DIR/lib/jvm.cfg ]] \
        || die "lib/jvm.cfg is missing after unpacking"
    cmp -s "$JAVA_HOME_DIR/lib/jvm.cfg" "$ROOT_DIR$JDK_ETC/jvm-armhf.cfg" \
        || die "lib/jvm.cfg does not match jvm-armhf.cfg"

    # Anything still pointing into the host's JDK configuration is a bug.
    local leftover
    leftover=$(find "$JAVA_HOME_DIR" -type l -lname "$JDK_ETC/*" -print -quit)
    [[ -z $leftover ]] || die "link into $JDK_ETC left behind: $leftover"
    # lib/security/cacerts stays pointing at /etc/ssl/certs/java/cacerts: it is
    # an architecture-independent key store, only used for TLS, and may
    # simply be absent.
}

unpack() {
    # The stamp records which .debs root/ was made from; a different set
    # (new versions in the cache) means unpacking again.
    local debs=() p deb
    for p in "${ARM_PACKAGES[@]}"; do
        deb=$(cached_deb "$p")
        [[ -n $deb ]] || die "no cached .deb for $p"
        debs+=("$deb")
    done
    local stamp_wanted
    stamp_wanted=$(for deb in "${debs[@]}"; do basename -- "$deb"; done)
    if [[ -d $ROOT_DIR && -f $ROOT_DIR/.unpacked && $(<"$ROOT_DIR/.unpacked") == "$stamp_wanted" ]]; then
        log "using unpacked runtime in $ROOT_DIR"
        return 0
    fi

    # Unpack next to the final place and swap it in at the end, so that an
    # interrupted run never leaves a half-done root/ that looks complete.
    local tmp
    tmp=$(mktemp -d "$CACHE_DIR/root.partial.XXXXXX")
    chmod 755 "$tmp"
    for deb in "${debs[@]}"; do
        log "unpacking $(basename -- "$deb")"
        dpkg-deb -x "$deb" "$tmp"
    done
    rm -rf -- "$ROOT_DIR"
    mv -- "$tmp" "$ROOT_DIR"
    [[ -d $JAVA_HOME_DIR ]] || die "the JDK was not found at $JAVA_HOME_DIR after unpacking"
    fix_etc_links
    [[ -f $JAVA_HOME_DIR/lib/server/libjvm.so ]] || die "libjvm.so missing in $JAVA_HOME_DIR/lib/server"
    printf '%s\n' "$stamp_wanted" >"$ROOT_DIR/.unpacked"
}

# ---------------------------------------------------------------------------
# 4. The qemu library prefix.
# ---------------------------------------------------------------------------

# qemu-arm with -L <prefix> (or QEMU_LD_PREFIX) loads the program's
# interpreter /lib/ld-linux-armhf.so.3 from <prefix>, and every absolute path
# the guest opens is looked up in <prefix> first. The ARM dynamic loader
# searches /lib/arm-linux-gnueabihf and /usr/lib/arm-linux-gnueabihf, so that
# is where the libraries go. The cross toolchain packages keep them flat in
# /usr/arm-linux-gnueabihf/lib; link each one in, then add the unpacked zlib.
build_sysroot() {
    local tmp
    tmp=$(mktemp -d "$CACHE_DIR/sysroot.partial.XXXXXX")
    chmod 755 "$tmp"
    mkdir -p "$tmp/lib/arm-linux-gnueabihf" "$tmp/usr/lib/arm-linux-gnueabihf" "$tmp/etc"
    ln -s "$CROSS_LIB/ld-linux-armhf.so.3" "$tmp/lib/ld-linux-armhf.so.3"

    local f
    for f in "$CROSS_LIB"/*.so*; do
        ln -s "$f" "$tmp/lib/arm-linux-gnueabihf/$(basename -- "$f")"
    done
    for f in "$ROOT_DIR"/lib/arm-linux-gnueabihf/* "$ROOT_DIR"/usr/lib/arm-linux-gnueabihf/*; do
        [[ -e $f ]] || continue
        ln -sfn "$f" "$tmp/lib/arm-linux-gnueabihf/$(basename -- "$f")"
    done
    # Without this, the ARM loader would read the host's /etc/ld.so.cache.
    # It ignores the amd64 entries, but an empty cache keeps it out of the
    # host's library folders altogether.
    : >"$tmp/etc/ld.so.cache"

    rm -rf -- "$SYSROOT_DIR"
    mv -- "$tmp" "$SYSROOT_DIR"
}

# Rebuilding is cheap (symlinks only); do it whenever the root was
# (re)unpacked or the sysroot looks incomplete.
sysroot_current() {
    [[ -e $SYSROOT_DIR/lib/ld-linux-armhf.so.3 \
        && -e $SYSROOT_DIR/lib/arm-linux-gnueabihf/libc.so.6 \
        && -e $SYSROOT_DIR/lib/arm-linux-gnueabihf/libz.so.1 \
        && -e $SYSROOT_DIR/lib/arm-linux-gnueabihf/libstdc++.so.6 \
        && $SYSROOT_DIR -nt $ROOT_DIR/.unpacked ]]
}

# ---------------------------------------------------------------------------

main() {
    # Leftovers of an interrupted earlier run.
    rm -rf -- "$CACHE_DIR"/debs.partial.* "$CACHE_DIR"/root.partial.* "$CACHE_DIR"/sysroot.partial.*

    check_host_packages
    download_debs
    unpack
    if sysroot_current; then
        log "using library prefix in $SYSROOT_DIR"
    else
        log "building library prefix in $SYSROOT_DIR"
        build_sysroot
    fi

    {
        printf '# Generated by tools/armhf-runtime.sh\n'
        printf 'export JAVA_HOME=%q\n' "$JAVA_HOME_DIR"
        printf 'export QEMU_LD_PREFIX=%q\n' "$SYSROOT_DIR"
    } >"$CACHE_DIR/env.sh.tmp"
    mv -f -- "$CACHE_DIR/env.sh.tmp" "$CACHE_DIR/env.sh"

    printf 'JAVA_HOME=%s\n' "$JAVA_HOME_DIR"
    printf 'QEMU_LD_PREFIX=%s\n' "$SYSROOT_DIR"
}

main
