#!/usr/bin/env python3
"""Turns a Google Benchmark JSON report into a ratio table.

usage: ratios.py REPORT.json OURS:PEER [OURS:PEER ...]

For each pair of benchmark families (e.g. BM_zvpCopy:BM_memcpy) it prints,
per argument, the peer's time divided by ours: above 1 means we are faster.
Aggregates (median) are used when the report has repetitions.
"""
import json
import sys


def times(report):
    out = {}
    for b in report["benchmarks"]:
        if b.get("run_type") == "aggregate" and b.get("aggregate_name") != "median":
            continue
        name = b.get("run_name", b["name"])
        fam, _, arg = name.partition("/")
        out[(fam, arg)] = b["real_time"]
    return out


def main():
    report = json.load(open(sys.argv[1]))
    t = times(report)
    for pair in sys.argv[2:]:
        ours, peer = pair.split(":")
        print(f"\n| size | {ours} | {peer} | speed ratio (peer time / our time) |")
        print("|---|---|---|---|")
        args = sorted({a for (f, a) in t if f == ours}, key=lambda a: [int(x) if x.isdigit() else x for x in a.split("/")])
        for a in args:
            if (peer, a) in t:
                o, p = t[(ours, a)], t[(peer, a)]
                print(f"| {a} | {o:.1f} | {p:.1f} | {p / o:.2f} |")


if __name__ == "__main__":
    main()
