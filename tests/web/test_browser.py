#!/usr/bin/env python3
"""test_browser.py PAGE: the game in a real browser, from its static folder, as build-web/ is one.

Pictures are left in PAGE-shots/, times are printed.
"""

import json
import struct
import subprocess
import sys
import tempfile
import time
import unittest
import zlib
from pathlib import Path

from chromium import Chromium, serve

ROOT = Path(__file__).resolve().parents[2]
PAGE = Path()

# Pads as a browser shows them, held by the test; the page hears of them as of real ones.
PADS = """
window.pads = [null, null, null, null];
navigator.getGamepads = () => window.pads;
window.plugIn = (slot) => {
  window.pads[slot] = {id: 'Test pad ' + slot + ' (STANDARD GAMEPAD)', index: slot, connected: true, mapping: 'standard',
      timestamp: performance.now(), axes: [0, 0, 0, 0],
      buttons: Array.from({length: 17}, () => ({pressed: false, touched: false, value: 0}))};
  const event = new Event('gamepadconnected');
  event.gamepad = window.pads[slot];
  window.dispatchEvent(event);
};
window.pullOut = (slot) => {
  const event = new Event('gamepaddisconnected');
  event.gamepad = window.pads[slot];
  event.gamepad.connected = false;
  window.pads[slot] = null;
  window.dispatchEvent(event);
};
window.hold = (slot, button, down) => {
  window.pads[slot].buttons[button] = {pressed: down, touched: down, value: down ? 1 : 0};
  window.pads[slot].timestamp = performance.now();
};
"""

# Listens to what the game plays, at the end of its way.
SOUND = """
(() => {
  const connect = AudioNode.prototype.connect;
  AudioNode.prototype.connect = function (to, ...rest) {
    if (to === this.context.destination && !this.context.meter && !(this instanceof AnalyserNode)) {
      this.context.meter = this.context.createAnalyser();
      window.meter = this.context.meter;
      connect.call(this, this.context.meter);
    }
    return connect.call(this, to, ...rest);
  };
  window.loudness = () => {
    const samples = new Float32Array(window.meter.fftSize);
    window.meter.getFloatTimeDomainData(samples);
    return Math.max(...samples.map(Math.abs));
  };
})();
"""


def read_png(path):
    """Rows of RGB or RGBA bytes of an 8-bit PNG, its width, and the bytes of a pixel."""
    data = path.read_bytes()
    place, packed, header = 8, b"", None
    while place < len(data):
        length, kind = struct.unpack(">I4s", data[place:place + 8])
        if kind == b"IHDR":
            header = struct.unpack(">IIBBBBB", data[place + 8:place + 21])
        if kind == b"IDAT":
            packed += data[place + 8:place + 8 + length]
        place += 12 + length
    width, height, _, colour = header[:4]
    size = {2: 3, 6: 4}[colour]
    raw, rows, above = zlib.decompress(packed), [], bytes(width * size)
    for y in range(height):
        start = y * (width * size + 1)
        row = bytearray(raw[start + 1:start + 1 + width * size])
        unfilter(raw[start], row, above, size)
        rows.append(bytes(row))
        above = row
    return rows, width, size
