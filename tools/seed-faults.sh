#!/usr/bin/env bash
# Seeds faults into the library and runs two test suites against each: the
# old suite (the tree at 9415177) and a new one (the tree at a commit given
# here). Each suite is built against its own commit's sources, so both
# compile; a fault is the same one-line edit in both, found in the new tree
# by its place among the lines the edit applies to. One scratch tree and one
# x86-64 build directory per suite; a fault rebuilds incrementally only the
# programs that can see it, and each program stops at its first failure
# (--gtest_fail_fast) under a timeout. Prints one table row per fault and the
# total time.
#
#   tools/seed-faults.sh NEW_COMMIT [fault-id ...]     (default: every fault)
#
# Environment: ZVP_SEED_WORK scratch directory (/tmp/zvp-seed),
# ZVP_SEED_QUICK=1 runs the new suite with ZVP_TEST_QUICK=1, ZVP_SEED_ASAN=1
# builds with the asan preset (and runs the faults marked asan).
#
# Tests that already fail on the unchanged tree are left out of the mutant
# runs, so any failure, crash or timeout of a mutant counts as a kill. The
# 2^30-element checks are left out (minutes per run; no fault is about
# lengths).
set -u
START=$(date +%s)
ROOT=$(cd "$(dirname "$0")/.." && pwd)
OLD=9415177
NEW=${1:?usage: tools/seed-faults.sh NEW_COMMIT [fault-id ...]}
shift
WANT=" $* "
WORK=${ZVP_SEED_WORK:-/tmp/zvp-seed}
ASAN=${ZVP_SEED_ASAN:-0}
PRESET=x64
[ "$ASAN" = 1 ] && PRESET=asan

# id @ file @ line at 9415177 @ sed expression @ expression in the new tree (empty: same) @ areas @ what
FAULTS=$(cat <<'EOF'
tie@src/common/scale.h@45@s/rem > half ||/rem >= half ||/@@arith@scale rule rounds ties away from zero
half@src/common/scale.h@44@s/U(1) << (sf - 1)/U(1) << sf/@@arith@scale rule compares with the wrong half
sat@src/common/scale.h@21@s/if (r > W(L::max())) return/if (r > W(L::max()) + 1) return/@@arith@saturation bound off by one
divc16sc@src/arith/psdiv.cpp@383@s/val.re == 0 \&\& val.im == 0/val.re == 0 || val.im == 0/@@arith@DivC_16sc refuses a constant with one zero part
divc32fc@src/arith/psdiv.cpp@448@s/val.re == 0.0f \&\& val.im == 0.0f/val.re == 0.0f || val.im == 0.0f/@@arith@DivC_32fc refuses a constant with one zero part
divc32f@src/arith/psdiv.cpp@409@s/1.0f \/ val/1.0f * val/@@arith@DivC_32f multiplies by the constant
divc64s@src/arith/psdiv.cpp@400@s/if (val == 0) return zvpStsDivByZeroErr;//@@arith@DivC zero-constant check skipped
div16u@src/arith/psdiv.cpp@37@s/(b == 0 \&\& a == 0) ? 0 : 65535/(b == 0) ? 0 : 65535/@@arith@Div_16u substitute ignores the divisor
lens@src/common/check.h@17@s/(len < 1)/(len < 0)/@@arith frame@length 0 accepted
flip@src/arith/psflip.cpp@19@s/for (; i < len; ++i)/for (; i < len - 1; ++i)/@@frame@Flip tail leaves its last element
ladder@src/arith/psln.cpp@49@s/4915, 13360/4916, 13360/@@arith@Ln_16s ladder step off by one
shift@src/arith/psshift.cpp@90@s/if (k < 0) return zvpStsShiftErr;//@@arith@negative shift count not refused
normmin@src/arith/psnormalize.cpp@24@s/< kSmallestNormalSingle/<= kSmallestNormalSingle/@s/>= kSmallestNormalSingle/> kSmallestNormalSingle/@arith@Normalize refuses the smallest normal divisor
sqrtneg@src/arith/pssqrt.cpp@53@s/negative |= x < 0.0f;/negative |= x <= 0.0f;/@@arith@Sqrt_32f warns on zero
multail@src/arith/psmul.cpp@379@s/for (; i < len; ++i)/for (; i < len - 1; ++i)/@@arith@Mul tail leaves its last element
andc@src/arith/pslogic.cpp@85@s/if (c == 0) {/if (c == 1) {/@@arith@AndC shortcut on the wrong constant
fftscale@src/transform/psffti.cpp@385@s/1.0f \/ float(n)/1.0f \/ float(n + 1)/@@transform@1/N scale off by one
fftsqrt@src/transform/psffti.cpp@390@s/std::sqrt(double(n)))/std::sqrt(double(n + 1)))/@@transform@1/sqrt(N) scale off by one
radix@src/transform/fftengine.h@376@s/a\[2\] = cmul<V, INV>(a\[2\], w2r, w2i);/a[2] = cmul<V, !INV>(a[2], w2r, w2i);/@@transform@radix-4 column pass conjugates a twiddle
overread@src/transform/psfftr.cpp@482@s/dst\[i\] = scaled ? x\[i\] \* f : x\[i\];/dst[i] = scaled ? x[i] * f : ((void)*(volatile const T*)\&x[i + 1], x[i]);/@@transform asan@small real inverse reads one past its local array
EOF
)

log() { echo "$@" >&2; }
elapsed() { echo "$(($(date +%s) - $1))s"; }

# Test programs per area; the new suite also runs the shape table.
progs() {  # suite areas
    local a out=""
    [ "$1" = new ] && out="zvp_shapes_tests"
    for a in $2; do
        case $a in
            arith) out="$out zvp_arith_tests zvp_arith_internal_tests" ;;
            frame) out="$out zvp_frame_tests" ;;
            transform) out="$out zvp_transform_tests zvp_transform_internal_tests" ;;
        esac
    done
    echo "$out"
}

# The suite's tree at its commit, built once; kept between runs while the
# commit stays the same, so later runs rebuild incrementally.
prepare() {  # suite commit
    local tree=$WORK/$1 hash
    hash=$(git -C "$ROOT" rev-parse "$2^{commit}") || return 1
    if [ "$(cat "$tree/.commit" 2>/dev/null)" != "$hash" ]; then
        rm -rf "$tree" && mkdir -p "$tree"
        git -C "$ROOT" archive "$hash" | tar -x -C "$tree"
        cp -a "$tree/src" "$tree/src.pristine"
        echo "$hash" >"$tree/.commit"
        rm -f "$WORK"/baseline-"$1"-*
    fi
    # Undo what an interrupted run may have left seeded.
    local f
    for f in $(diff -rq "$tree/src.pristine" "$tree/src" | sed -n 's/^Files [^ ]* and \([^ ]*\) differ$/\1/p'); do
        cp "$tree/src.pristine/${f#$tree/src/}" "$f"
    done
    local t0=$(date +%s)
    (cd "$tree" && cmake --preset "$PRESET" >"$tree/configure.log" 2>&1 &&
        cmake --build --preset "$PRESET" >"$tree/build.log" 2>&1) ||
        { log "build failed in $tree (see $tree/build.log)"; return 1; }
    log "$1 suite at ${hash:0:7} built in $(elapsed "$t0")"
}

# The tests that fail on the unchanged tree, and how long the program takes.
baseline() {  # suite program
    local f=$WORK/baseline-$1-$PRESET-$2 bin=$WORK/$1/build/$PRESET/tests/$2 t0
    [ -f "$f" ] && return
    t0=$(date +%s)
    run "$1" "$bin" '-*LongLengths*' 3600 | sed -n 's/^\[  FAILED  \] \([^ ,]*\).*/\1/p' | sort -u >"$f.tmp"
    echo "$(($(date +%s) - t0))" >"$f.time"
    mv "$f.tmp" "$f"
}

run() {  # suite binary filter timeout [extra args]
    local suite=$1 bin=$2 filter=$3 limit=$4
    shift 4
    if [ "$suite" = new ] && [ "${ZVP_SEED_QUICK:-0}" = 1 ]; then
        ZVP_TEST_QUICK=1 timeout "$limit" "$bin" --gtest_filter="$filter" "$@" 2>&1
    else
        timeout "$limit" "$bin" --gtest_filter="$filter" "$@" 2>&1
    fi
}

# killed(program) or survived: the programs of the fault's areas, each
# stopping at its first failure, skipping the tests that fail on the base.
judge() {  # suite areas
    local p bin base filter limit rc
    for p in $(progs "$1" "$2"); do
        bin=$WORK/$1/build/$PRESET/tests/$p
        [ -x "$bin" ] || continue
        base=$WORK/baseline-$1-$PRESET-$p
        filter="-*LongLengths*$(sed 's/^/:/' "$base" | tr -d '\n')"
        limit=$((3 * $(cat "$base.time") + 60))
        run "$1" "$bin" "$filter" "$limit" --gtest_fail_fast >/dev/null
        rc=$?
        [ $rc = 124 ] && { echo "killed($p,timeout)"; return; }
        [ $rc != 0 ] && { echo "killed($p)"; return; }
    done
    echo survived
}

# Line numbers of a file that an expression changes.
changed_lines() {  # file expr
    diff --unchanged-line-format= --old-line-format='%dn
' --new-line-format= "$1" <(sed "$2" "$1")
}

# Seeds the fault into one suite's tree, judges it, restores the file.
seed() {  # suite file line expr newexpr areas
    local suite=$1 file=$2 line=$3 expr=$4 nexpr=$5 areas=$6 tree=$WORK/$1 k target t
    local pristine=$WORK/$1/src.pristine/${file#src/}
    [ -f "$pristine" ] || { echo "(no file)"; return; }
    # The fault's place among the lines the edit applies to at 9415177...
    k=$(changed_lines "$WORK/old/src.pristine/${file#src/}" "$expr" | grep -nx "$line" | cut -d: -f1)
    [ -n "$k" ] || { echo "(no match)"; return; }
    # ... is its place in this tree.
    [ "$suite" = new ] && [ -n "$nexpr" ] && expr=$nexpr
    target=$(changed_lines "$pristine" "$expr" | sed -n "${k}p")
    [ -n "$target" ] || { echo "(no match)"; return; }
    sed -i "${target}${expr}" "$tree/$file"
    cmp -s "$pristine" "$tree/$file" && { echo "(no change)"; return; }
    local targets="" p
    for p in $(progs "$suite" "$areas"); do targets="$targets --target $p"; done
    if (cd "$tree" && cmake --build --preset "$PRESET" $targets >"$tree/mutant.log" 2>&1); then
        echo "$(judge "$suite" "$areas")"
    else
        echo "(build failed)"
    fi
    cp "$pristine" "$tree/$file"
}

main() {
    mkdir -p "$WORK"
    prepare old "$OLD" || exit 1
    prepare new "$NEW" || exit 1
    # Baselines on the unchanged trees, before any fault is seeded, for the
    # programs the chosen faults need.
    local s p areas=""
    areas=$(echo "$FAULTS" | while IFS='@' read -r id _ _ _ _ a _; do
        [ "$WANT" = "  " ] || [[ "$WANT" == *" $id "* ]] && echo "$a"; done | tr ' ' '\n' | sort -u | tr '\n' ' ')
    for s in old new; do
        for p in $(progs "$s" "$areas"); do
            [ -x "$WORK/$s/build/$PRESET/tests/$p" ] && baseline "$s" "$p"
        done
    done
    log "baselines ready after $(elapsed "$START")"
    printf '%-9s %-31s %-34s %-34s %-6s %s\n' fault file old new time what
    echo "$FAULTS" | while IFS='@' read -r id file line expr nexpr areas what; do
        [ "$WANT" != "  " ] && [[ "$WANT" != *" $id "* ]] && continue
        if [[ " $areas " == *" asan "* ]] && [ "$ASAN" != 1 ]; then
            printf '%-9s %-31s %-34s %-34s %-6s %s\n' "$id" "$file:$line" "(asan only)" "(asan only)" - "$what"
            continue
        fi
        local t0=$(date +%s) o n
        o=$(seed old "$file" "$line" "$expr" "$nexpr" "$areas")
        n=$(seed new "$file" "$line" "$expr" "$nexpr" "$areas")
        printf '%-9s %-31s %-34s %-34s %-6s %s\n' "$id" "$file:$line" "$o" "$n" "$(elapsed "$t0")" "$what"
    done
    # Leave both builds matching their sources for the next run.
    for s in old new; do (cd "$WORK/$s" && cmake --build --preset "$PRESET" >/dev/null 2>&1); done
    echo "total $(elapsed "$START")"
}

main "$@"
