#!/usr/bin/env python3
"""Expected numbers of the BCG meta-regression cases, worked with numpy.

Weighted least squares of the log odds ratio on absolute latitude with the
design matrix [1, x] and weights 1 / (v + tau2), solved as (X'WX)^-1 X'Wy.
The moments tau-squared is (QE - (k - 2)) / (sum w - tr((X'WX)^-1 X'W^2 X))
around the fixed line; the maximum-likelihood tau-squared is iterated as
tau2 <- sum w^2 ((y - Xb)^2 - v) / sum w^2, starting from the moments value,
until it moves by less than 1e-8 (at the earliest on its second update).

    bcg_regress.py fixed|ml   prints the checks of that case as JSON
"""
import csv
import json
import math
import os
import sys

import numpy as np

HERE = os.path.dirname(os.path.abspath(__file__))
CSV = os.path.join(HERE, "..", "cases", "ref_bcg_regress_moments", "input.csv")


def read():
    with open(CSV, newline="") as f:
        rows = list(csv.DictReader(f))
    a = np.array([float(r["Group-A Events"]) for r in rows])
    b = np.array([float(r["Group-A Non-events"]) for r in rows])
    c = np.array([float(r["Group-B Events"]) for r in rows])
    d = np.array([float(r["Group-B Non-events"]) for r in rows])
    x = np.array([float(r["ablat"]) for r in rows])
    return np.log(a * d / (b * c)), 1 / a + 1 / b + 1 / c + 1 / d, x


def chi2_upper(q, df):
    """Upper tail of chi-squared with an integer df, in closed form."""
    h = q / 2
    if df % 2 == 0:
        return math.exp(-h) * sum(h**j / math.factorial(j) for j in range(df // 2))
    tail = math.erfc(math.sqrt(h))
    for j in range(1, (df - 1) // 2 + 1):
        tail += math.exp(-h) * h ** (j - 0.5) / math.gamma(j + 0.5)
    return tail


def normal_two_tailed(z):
    return math.erfc(abs(z) / math.sqrt(2))


def fit(y, v, x, tau2):
    w = 1 / (v + tau2)
    X = np.column_stack([np.ones_like(x), x])
    XtWX = X.T @ (w[:, None] * X)
    cov = np.linalg.inv(XtWX)
    beta = cov @ (X.T @ (w * y))
    resid = y - X @ beta
    ybar = np.sum(w * y) / np.sum(w)
    qt = float(np.sum(w * (y - ybar) ** 2))
    qe = float(np.sum(w * resid**2))
    k = len(y)
    c = float(np.sum(w) - np.trace(cov @ (X.T @ ((w**2)[:, None] * X))))
    moments = max(0.0, (qe - (k - 2)) / c)
    ml = max(0.0, float(np.sum(w**2 * (resid**2 - v)) / np.sum(w**2)))
    se = np.sqrt(np.diag(cov))
    return dict(beta=beta, se=se, qt=qt, qe=qe, qm=qt - qe, k=k, moments=moments, ml=ml)


def checks(method):
    y, v, x = read()
    z = 1.959963984540054  # |qnorm(0.025)|
    steps = [("Fixed", 0.0)]
    first = fit(y, v, x, 0.0)
    cells = [first["moments"]]
    if method == "ml":
        tau2 = first["moments"]
        i = 2
        while i <= 40:
            nxt = fit(y, v, x, tau2)["ml"]
            steps.append(("Method of moments" if i == 2 else f"Unrestricted ML ({i - 2})", tau2))
            cells.append(nxt)
            if abs(nxt - tau2) < 1e-8 and i >= 4:
                break
            tau2 = nxt
            i += 1
    name, weight_tau2 = steps[-1]
    r = fit(y, v, x, weight_tau2)
    out = []

    def num(path, value, rtol=1e-9, atol=1e-12):
        out.append({"path": path, "value": value, "rtol": rtol, "atol": atol})

    out.append({"path": "method", "value": method})
    out.append({"path": "title", "value": "Fixed effect regression" if method == "fixed" else
                "Mixed effects regression (unrestricted maximum likelihood)"})
    num("k", r["k"], 0, 0)
    for key, i in (("slope", 1), ("intercept", 0)):
        b, s = float(r["beta"][i]), float(r["se"][i])
        num(f"{key}.point", b)
        num(f"{key}.se", s)
        num(f"{key}.lower", b - z * s)
        num(f"{key}.upper", b + z * s)
        num(f"{key}.z", b / s)
        num(f"{key}.p", normal_two_tailed(b / s), 1e-7, 1e-12)
    for key, q, df in (("q_model", r["qm"], 1), ("q_residual", r["qe"], r["k"] - 2),
                       ("q_total", r["qt"], r["k"] - 1)):
        num(f"{key}.q", q)
        num(f"{key}.df", df, 0, 0)
        num(f"{key}.p", chi2_upper(q, df), 1e-7, 1e-10)
    num("tau2", cells[-1])
    num(f"steps[name={name}].tau2", cells[-1])
    num("steps[name=Fixed].tau2", cells[0])
    if method == "ml":
        num("steps[name=Method of moments].tau2", cells[1])
        out.append({"path": "steps[name=Unrestricted ML (%d)]" % (len(steps) - 1), "absent": True})
    return out


if __name__ == "__main__":
    print(json.dumps(checks(sys.argv[1]), indent=2))
