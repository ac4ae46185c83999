#!/usr/bin/env bash
# Seeds faults into the library as it is at a base commit and runs two test
# suites against each: the suite of that base (old) and the suite of this
# tree (new). Each fault is one line changed by sed in a scratch copy; both
# suites are built for x86-64 in their own build directories, only the test
# programs that can see the fault run, and each suite stops at its first
# program that reports a new failure. Prints one table row per fault.
#
#   tools/seed-faults.sh [fault-id ...]     (default: every fault)
#
# The new suite already fails at the base where the base has known faults,
# so a fault counts as killed by a suite when that suite reports a failure it
# does not report on the unchanged base (a gtest test, or a "[shape check]
# row" line of the shape table). The long-length checks (2^30 elements) are
# left out: they take minutes per run and no seeded fault is about lengths.
# Faults marked asan are only visible to a sanitizer build: they are run in
# ASan builds when ZVP_SEED_ASAN=1 is set.
set -u
ROOT=$(cd "$(dirname "$0")/.." && pwd)
BASE=${ZVP_SEED_BASE:-9415177}
WORK=${ZVP_SEED_WORK:-/tmp/zvp-seed}
ASAN=${ZVP_SEED_ASAN:-0}

# id | file | line | sed expression | programs | what
FAULTS=$(cat <<'EOF'
tie|src/common/scale.h|45|s/rem > half ||/rem >= half ||/|arith|scale rule rounds ties away from zero
half|src/common/scale.h|44|s/U(1) << (sf - 1)/U(1) << sf/|arith|scale rule compares with the wrong half
sat|src/common/scale.h|21|s/if (r > W(L::max())) return/if (r > W(L::max()) + 1) return/|arith|saturation bound off by one
divc16sc|src/arith/psdiv.cpp|383|s/val.re == 0 \&\& val.im == 0/val.re == 0 || val.im == 0/|arith|DivC_16sc refuses a constant with one zero part
divc32fc|src/arith/psdiv.cpp|448|s/val.re == 0.0f \&\& val.im == 0.0f/val.re == 0.0f || val.im == 0.0f/|arith|DivC_32fc refuses a constant with one zero part
divc32f|src/arith/psdiv.cpp|409|s/1.0f \/ val/1.0f * val/|arith|DivC_32f multiplies by the constant
divc64s|src/arith/psdiv.cpp|400|s/if (val == 0) return zvpStsDivByZeroErr;//|arith|DivC zero-constant check skipped
div16u|src/arith/psdiv.cpp|37|s/(b == 0 \&\& a == 0) ? 0 : 65535/(b == 0) ? 0 : 65535/|arith|Div_16u substitute ignores the divisor
lens|src/common/check.h|17|s/(len < 1)/(len < 0)/|arith frame|length 0 accepted
flip|src/arith/psflip.cpp|19|s/for (; i < len; ++i)/for (; i < len - 1; ++i)/|frame|Flip tail leaves its last element
ladder|src/arith/psln.cpp|49|s/4915, 13360/4916, 13360/|arith|Ln_16s ladder step off by one
shift|src/arith/psshift.cpp|90|s/if (k < 0) return zvpStsShiftErr;//|arith|negative shift count not refused
normmin|src/arith/psnormalize.cpp|24|s/< kSmallestNormalSingle/<= kSmallestNormalSingle/|arith|Normalize refuses the smallest normal divisor
sqrtneg|src/arith/pssqrt.cpp|53|s/negative |= x < 0.0f;/negative |= x <= 0.0f;/|arith|Sqrt_32f warns on zero
multail|src/arith/psmul.cpp|379|s/for (; i < len; ++i)/for (; i < len - 1; ++i)/|arith|Mul tail leaves its last element
andc|src/arith/pslogic.cpp|85|s/if (c == 0) {/if (c == 1) {/|arith|AndC shortcut on the wrong constant
fftscale|src/transform/psffti.cpp|385|s/1.0f \/ float(n)/1.0f \/ float(n + 1)/|transform|1/N scale off by one
fftsqrt|src/transform/psffti.cpp|390|s/std::sqrt(double(n)))/std::sqrt(double(n + 1)))/|transform|1/sqrt(N) scale off by one
radix|src/transform/fftengine.h|376|s/a\[2\] = cmul<V, INV>(a\[2\], w2r, w2i);/a[2] = cmul<V, !INV>(a[2], w2r, w2i);/|transform|radix-4 column pass conjugates a twiddle
overread|src/transform/psfftr.cpp|482|s/dst\[i\] = scaled ? x\[i\] \* f : x\[i\];/dst[i] = scaled ? x[i] * f : ((void)*(volatile const T*)\&x[i + 1], x[i]);/|transform asan|small real inverse reads one past its local array
EOF
)

OLD_PROGS_arith="zvp_arith_tests zvp_arith_internal_tests"
OLD_PROGS_frame="zvp_frame_tests"
OLD_PROGS_transform="zvp_transform_tests zvp_transform_internal_tests"
NEW_EXTRA="zvp_shapes_tests"

log() { echo "$@" >&2; }

prepare() {  # tree suite preset
    local tree=$WORK/$1 preset=$3
    mkdir -p "$tree"
    if [ ! -f "$tree/.ready" ]; then
        rm -rf "$tree" && mkdir -p "$tree"
        git -C "$ROOT" archive "$BASE" | tar -x -C "$tree"
        if [ "$2" = new ]; then
            rm -rf "$tree/tests"
            (cd "$ROOT" && tar -c tests) | tar -x -C "$tree"
        fi
        cp -a "$tree/src" "$tree/src.pristine"
        touch "$tree/.ready"
    fi
    (cd "$tree" && cmake --preset "$preset" >/dev/null && cmake --build --preset "$preset" >"$tree/build.log" 2>&1) ||
        { log "build failed in $tree (see $tree/build.log)"; return 1; }
}

# Failure keys of one program: failed tests and shape rows; CRASH when it
# died without a gtest summary.
keys() {  # binary
    local out rc
    out=$(timeout 900 "$1" --gtest_filter='-*LongLengths*' 2>&1)
    rc=$?
    echo "$out" | sed -n 's/^\[  FAILED  \] \([^ ,]*\).*/test \1/p; s/^\[shape \([a-z]*\)\] \([A-Za-z0-9_]*\):.*/shape \1 \2/p' | sort -u
    if [ $rc -gt 1 ] || ! echo "$out" | grep -q '^\[==========\]'; then echo "crash $(basename "$1") rc=$rc"; fi
}

# killed|survived for one suite: runs its programs for the fault's areas,
# stopping at the first new failure key.
run_suite() {  # tree suite areas preset
    local tree=$WORK/$1 suite=$2 areas=$3 preset=$4 progs="" p a
    for a in $areas; do
        [ "$a" = asan ] && continue
        eval "progs=\"\$progs \$OLD_PROGS_$a\""
    done
    [ "$suite" = new ] && progs="$NEW_EXTRA $progs"
    for p in $progs; do
        local bin=$tree/build/$preset/tests/$p
        [ -x "$bin" ] || continue
        local base=$WORK/baseline-$suite-$preset-$p
        [ -f "$base" ] || { log "no baseline for $p"; continue; }
        if [ -n "$(comm -13 "$base" <(keys "$bin"))" ]; then echo "killed($p)"; return; fi
    done
    echo survived
}

main() {
    mkdir -p "$WORK"
    local want="$*" preset=x64
    [ "$ASAN" = 1 ] && preset=asan
    for s in old new; do prepare "$s" "$s" "$preset" || exit 1; done
    # Baselines: the failure keys of every program on the unchanged base.
    for s in old new; do
        for b in "$WORK/$s/build/$preset/tests"/zvp_*tests; do
            local f=$WORK/baseline-$s-$preset-$(basename "$b")
            [ -f "$f" ] || keys "$b" >"$f"
        done
    done
    printf '%-10s %-32s %-28s %-28s %s\n' fault file old new what
    echo "$FAULTS" | while IFS='|' read -r id file line expr areas what; do
        [ -n "$want" ] && [[ " $want " != *" $id "* ]] && continue
        if [[ " $areas " == *" asan "* ]] && [ "$ASAN" != 1 ]; then
            printf '%-10s %-32s %-28s %-28s %s\n' "$id" "$file:$line" "(asan only)" "(asan only)" "$what"
            continue
        fi
        local res=()
        for s in old new; do
            local tree=$WORK/$s
            sed -i "${line}${expr}" "$tree/$file"
            if cmp -s "$tree/$file" "$tree/src.pristine/${file#src/}"; then
                res+=("(no change)")
                continue
            fi
            if (cd "$tree" && cmake --build --preset "$preset" >"$tree/mutant.log" 2>&1); then
                res+=("$(run_suite "$s" "$s" "$areas" "$preset")")
            else
                res+=("(build failed)")
            fi
            cp "$tree/src.pristine/${file#src/}" "$tree/$file"
        done
        printf '%-10s %-32s %-28s %-28s %s\n' "$id" "$file:$line" "${res[0]}" "${res[1]}" "$what"
    done
    for s in old new; do (cd "$WORK/$s" && cmake --build --preset "$preset" >/dev/null 2>&1); done
}

main "$@"
