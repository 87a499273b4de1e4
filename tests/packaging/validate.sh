#!/bin/sh
# validate.sh WHAT PLACE: what validators say about the files installed in PLACE (for "debian": about
# the package of the build folder PLACE). Status 77 when a validator is missing.
set -eu
what=$1
place=$2

need() {
    for tool; do
        command -v "$tool" >/dev/null || { echo "skipped: no $tool here"; exit 77; }
    done
}
# Fails when the text of standard input is not empty.
silence() {
    said=$(cat)
    [ -z "$said" ] || { echo "$said"; exit 1; }
}

case $what in
desktop)
    need desktop-file-validate
    desktop-file-validate "$place"/share/applications/*.desktop "$place"/share/ostrova/*.desktop \
        2>&1 | silence
    ;;
metainfo)
    need appstreamcli
    said=$(appstreamcli validate --no-net --pedantic --no-color "$place"/share/metainfo/*.xml) ||
        { echo "$said"; exit 1; }
    # It doesn't know the top-level domain "example".
    echo "$said" | grep '^[EWIP]:' | grep -v 'cid-maybe-not-rdns example\.' | silence
    ;;
man)
    need man
    for page in "$place"/share/man/man1/*; do
        LC_ALL=C.UTF-8 MANWIDTH=80 MANROFFSEQ="" man --warnings -E UTF-8 -l -Tutf8 -Z "$page" \
            2>&1 >/dev/null | silence
    done
    ;;
mandoc)
    need mandoc gzip
    for page in "$place"/share/man/man1/*; do
        # It looks for the pages referred to in the system's folders only.
        gzip -cd "$page" | mandoc -Tlint 2>&1 |
            grep -v -e 'referenced manual not found' -e 'outdated mandoc.db' | silence
    done
    ;;
unit)
    need systemd-analyze
    runtime=$(mktemp -d)
    trap 'rm -rf "$runtime"' EXIT
    MANPATH=$place/share/man: XDG_RUNTIME_DIR=$runtime systemd-analyze verify --user \
        "$place"/share/systemd/user/ostrova.service 2>&1 | silence
    ;;
bash | zsh | fish)
    need "$what"
    case $what in
    bash) folder=bash-completion/completions look=-n ;;
    zsh) folder=zsh/site-functions look=-n ;;
    fish) folder=fish/vendor_completions.d look=--no-execute ;;
    esac
    for file in "$place/share/$folder"/*; do $what $look "$file" 2>&1 | silence; done
    ;;
moved) # the tree finds its own window wherever it lies
    tree=$(mktemp -d)
    trap 'rm -rf "$tree"' EXIT
    mkdir -p "$tree/bin" "$tree/libexec/ostrova"
    cp "$place/bin/ostrova" "$tree/bin/"
    printf '#!/bin/sh\necho window "$@"\n' >"$tree/libexec/ostrova/ostrova-window"
    chmod +x "$tree/libexec/ostrova/ostrova-window"
    [ "$(HOME=$tree "$tree/bin/ostrova" word)" = "window word" ]
    ;;
hardening)
    need readelf
    for program in "$place"/bin/* $(find "$place/libexec" -type f 2>/dev/null); do
        facts=$(readelf --wide -hld --dyn-syms "$program")
        wanted='DYN.( GNU_RELRO BIND_NOW __stack_chk_fail'
        case $3 in *Rel*) wanted="$wanted _chk@GLIBC" ;; esac # the optimising builds
        for fact in $wanted; do
            echo "$facts" | grep -q "$fact" || { echo "$program: no $fact"; exit 1; }
        done
    done
    ;;
debian)
    need dpkg-shlibdeps lintian cpack file
    packed=$(mktemp -d)
    trap 'rm -rf "$packed"' EXIT
    umask 022
    cpack -G DEB --config "$place/CPackConfig.cmake" -B "$packed" \
        -D CPACK_INSTALL_PREFIX=/usr >"$packed/log" 2>&1 || { cat "$packed/log"; exit 1; }
    lintian --fail-on error,warning --allow-root "$packed"/*.deb
    libraries='libc6 libcurl4 libstdc++6 libutf8proc2'
    if dpkg-deb -c "$packed"/*.deb | grep -q ostrova-window; then
        libraries="$libraries libqt6gui6 libqt6widgets6"
    fi
    for library in $libraries; do
        dpkg-deb -f "$packed"/*.deb Depends | grep -qF "$library" ||
            { echo "no dependency on $library"; exit 1; }
    done
    dpkg-deb -c "$packed"/*.deb | grep -E 'gallery|demo|test|\.(a|h|hpp|cmake)$' | silence
    ;;
esac
