"""Draws a cloud from above, thinned to what a picture can show: a file, or a made-up landscape.

picture.py OUT.png [FILE]
"""

from __future__ import annotations

import sys

import matplotlib
import numpy as np

import zor4data

matplotlib.use("Agg")

from matplotlib import pyplot as plt  # noqa: E402


def make_landscape(count: int = 400_000) -> zor4data.Cloud:
    """Hills, and houses on them."""
    rng = np.random.default_rng(1)
    x, y = rng.uniform(0.0, 300.0, (2, count))
    z = 8.0 * np.sin(x / 60.0) + 6.0 * np.cos(y / 45.0)
    z += np.where((x % 60.0 < 14.0) & (y % 50.0 < 12.0), 7.0, 0.0)
    return zor4data.from_arrays(np.column_stack([x, y, z]))


def main() -> None:
    """Draws."""
    if len(sys.argv) not in (2, 3):
        raise SystemExit(__doc__)
    cloud = zor4data.read(sys.argv[2]) if len(sys.argv) == 3 else make_landscape()
    low, high = cloud.bounds
    spacing = float((high - low)[:2].max()) / 600.0  # about a point a pixel
    x, y, z = cloud.xyz(cloud.lod(spacing)).T
    plt.figure(figsize=(8, 7))
    plt.scatter(x, y, c=z, s=1.0, marker=",", linewidths=0)
    plt.colorbar(label="height")
    plt.gca().set_aspect("equal")
    plt.savefig(sys.argv[1], dpi=100)
    print(f"{sys.argv[1]}: {len(x):,} of {cloud}")


if __name__ == "__main__":
    main()
