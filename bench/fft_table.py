#!/usr/bin/env python3
"""Turns a Google Benchmark JSON report of an FFT benchmark into a table.

usage: fft_table.py REPORT.json OURS:PEER [OURS:PEER ...]

For each pair of families (e.g. BM_zvp_32fc:BM_fftw_32fc) it prints, per
argument (the order m, N = 2^m): the CPU-time ratio ours / peer (below 1 means
we are faster), the "mflops" counter of both (the benchFFT figure) and the
"err" counter of both (relative L2 error against the same reference).
With repetitions, the fastest repetition of each benchmark is used (run with
--benchmark_enable_random_interleaving so both sides see the same load).
"""
import json
import sys


def rows(report):
    """Per (family, arg): the repetition with the least CPU time.

    On a shared machine the other processes only ever add time, so the
    minimum over (interleaved) repetitions is the steadiest estimate."""
    out = {}
    for b in report["benchmarks"]:
        if b.get("run_type") == "aggregate":
            continue
        name = b.get("run_name", b["name"])
        fam, _, arg = name.partition("/")
        if (fam, arg) not in out or b["cpu_time"] < out[(fam, arg)]["cpu_time"]:
            out[(fam, arg)] = b
    return out


def main():
    report = json.load(open(sys.argv[1]))
    r = rows(report)
    for pair in sys.argv[2:]:
        ours, peer = pair.split(":")
        print(f"\n| N | time ratio {ours} / {peer} | MFLOPS ours | MFLOPS peer "
              f"| rel. L2 error ours | rel. L2 error peer | error ratio |")
        print("|---|---|---|---|---|---|---|")
        args = sorted({a for (f, a) in r if f == ours}, key=int)
        for a in args:
            if (peer, a) not in r:
                continue
            o, p = r[(ours, a)], r[(peer, a)]
            eo, ep = o.get("err", float("nan")), p.get("err", float("nan"))
            er = eo / ep if ep else float("nan")
            print(f"| 2^{a} | {o['cpu_time'] / p['cpu_time']:.2f} | {o.get('mflops', 0):.0f} "
                  f"| {p.get('mflops', 0):.0f} | {eo:.2e} | {ep:.2e} | {er:.2f} |")


if __name__ == "__main__":
    main()
