#!/usr/bin/env node
// Makes the rings and pictures that a phone is delivered with: node scripts/make_media.mjs
// Run by hand after a change here; the files it writes are kept in the repository.
import { execFileSync } from "node:child_process";
import { mkdirSync, writeFileSync } from "node:fs";
import { dirname } from "node:path";
import { fileURLToPath } from "node:url";
import { deflateSync } from "node:zlib";

const sysdata = fileURLToPath(new URL("../rootfs/phone/resource/sysdata/", import.meta.url));

function save(name, bytes) {
  mkdirSync(dirname(sysdata + name), { recursive: true });
  writeFileSync(sysdata + name, bytes);
  console.log(`${name}: ${bytes.length} bytes`);
}

// --- Rings: 8 kHz, mono, 8 bits without sign.

const sampleRate = 8000;

function wav(samples) {
  const head = Buffer.alloc(44);
  head.write("RIFF", 0);
  head.writeUInt32LE(36 + samples.length, 4);
  head.write("WAVEfmt ", 8);
  head.writeUInt32LE(16, 16);
  head.writeUInt16LE(1, 20); // PCM
  head.writeUInt16LE(1, 22);
  head.writeUInt32LE(sampleRate, 24);
  head.writeUInt32LE(sampleRate, 28);
  head.writeUInt16LE(1, 32);
  head.writeUInt16LE(8, 34);
  head.write("data", 36);
  head.writeUInt32LE(samples.length, 40);
  return Buffer.concat([head, samples]);
}

// A bell-like note: quick to come, slow to go, with a soft octave above. Times in seconds.
function note(mix, start, length, frequency) {
  for (let i = 0; i < length * sampleRate; ++i) {
    const t = i / sampleRate;
    const envelope = Math.min(1, t / 0.008) * Math.exp((-4 * t) / length) * Math.min(1, (length - t) / 0.02);
    const wave = Math.sin(2 * Math.PI * frequency * t) + 0.35 * Math.sin(4 * Math.PI * frequency * t);
    mix[Math.floor(start * sampleRate) + i] += envelope * wave;
  }
}

function ring(seconds, notes) {
  const mix = new Float64Array(seconds * sampleRate);
  for (const [start, length, frequency] of notes) note(mix, start, length, frequency);
  const peak = mix.reduce((most, value) => Math.max(most, Math.abs(value)), 0);
  return wav(Buffer.from(Array.from(mix, (value) => Math.round(128 + (100 * value) / peak))));
}

const [C5, D5, E5, G5, A5, C6, E6] = [523.25, 587.33, 659.26, 783.99, 880, 1046.5, 1318.51];
const warble = Array.from({ length: 16 }, (_, i) => [i * 0.06, 0.09, i % 2 ? E5 : C5]);
const rings = [
  [2, [[0, 0.6, C5], [0.15, 0.6, E5], [0.3, 0.6, G5], [0.45, 1, C6]]],
  [1.5, [...warble]],
  [2, [[0, 0.9, G5], [0.3, 0.9, E5], [0.6, 0.9, A5], [0.9, 1.1, D5]]],
  [1.8, [[0, 0.5, C6], [0.12, 0.5, E6], [0.8, 0.5, C6], [0.92, 0.8, E6]]],
];
rings.forEach(([seconds, notes], i) => save(`sound/Ring${i + 1}.wav`, ring(seconds, notes)));

// --- Pictures: 8-bit RGB PNG.

function crc32(bytes) {
  let crc = ~0;
  for (const byte of bytes) {
    crc ^= byte;
    for (let bit = 0; bit < 8; ++bit) crc = (crc >>> 1) ^ (crc & 1 ? 0xedb88320 : 0);
  }
  return ~crc >>> 0;
}

function chunk(type, data) {
  const body = Buffer.concat([Buffer.from(type), data]);
  const framed = Buffer.alloc(body.length + 8);
  framed.writeUInt32BE(data.length, 0);
  body.copy(framed, 4);
  framed.writeUInt32BE(crc32(body), framed.length - 4);
  return framed;
}

// Each row as the differences to the row above: smooth pictures get small so.
function filtered(width, height, pixel) {
  const stride = 1 + 3 * width;
  const rows = Buffer.alloc(stride * height);
  let above = new Uint8Array(3 * width);
  for (let y = 0; y < height; ++y) {
    const row = new Uint8Array(3 * width);
    for (let x = 0; x < width; ++x) row.set(pixel(x, y).map((value) => Math.max(0, Math.min(255, value))), 3 * x);
    rows[y * stride] = 2;
    row.forEach((value, i) => (rows[y * stride + 1 + i] = value - above[i]));
    above = row;
  }
  return rows;
}

// `pixel` gives [red, green, blue], 0 to 255, for a place.
function png(width, height, pixel) {
  const head = Buffer.alloc(13);
  head.writeUInt32BE(width, 0);
  head.writeUInt32BE(height, 4);
  head.set([8, 2, 0, 0, 0], 8);
  const signature = Buffer.from([0x89, 0x50, 0x4e, 0x47, 0x0d, 0x0a, 0x1a, 0x0a]);
  const data = deflateSync(filtered(width, height, pixel), { level: 9 });
  return Buffer.concat([signature, chunk("IHDR", head), chunk("IDAT", data), chunk("IEND", Buffer.alloc(0))]);
}

const blend = (from, to, part) => from.map((value, i) => Math.round(value + (to[i] - value) * part));
const clamp = (value) => Math.max(0, Math.min(1, value));

// Wallpapers fill the phone's screen.
const [WIDTH, HEIGHT] = [480, 272];

function dusk(x, y) {
  const sky = blend([24, 32, 72], [222, 142, 110], (y / HEIGHT) ** 1.4);
  const hill = HEIGHT * 0.78 + 18 * Math.sin(x / 55) + 8 * Math.sin(x / 19 + 1);
  return blend(sky, [22, 24, 44], clamp(y - hill));
}

function waves(x, y) {
  const colours = [[9, 62, 88], [14, 92, 116], [28, 124, 140], [66, 158, 160], [128, 194, 186]];
  const band = colours.filter((_, i) => y > 52 * (i + 1) + 14 * Math.sin(x / (70 + 9 * i) + 1.7 * i)).length;
  return colours[Math.max(0, colours.length - 1 - band)];
}

function tiles(x, y) {
  const [column, row] = [Math.floor(x / 32), Math.floor(y / 32)];
  const shade = ((column * 7 + row * 13) % 5) / 4;
  const edge = x % 32 === 0 || y % 32 === 0 ? 0.25 : 0;
  return blend(blend([46, 66, 58], [86, 124, 98], shade), [20, 30, 26], edge);
}

function meadow(x, y) {
  const sky = blend([150, 196, 232], [232, 242, 248], y / (HEIGHT * 0.7));
  const hills = [[0.62, 30, 90, [112, 160, 120]], [0.74, 22, 60, [78, 132, 92]], [0.86, 14, 40, [46, 100, 66]]];
  return hills.reduce((ground, [height, rise, length, colour], i) =>
    blend(ground, colour, clamp(y - HEIGHT * height - rise * Math.sin(x / length + 2.1 * i))), sky);
}

[dusk, waves, tiles].forEach((pixel, i) => save(`wallpaper/pictures (0${i + 1}).png`, png(WIDTH, HEIGHT, pixel)));
// The standard one lies outside the folder of the choices: the list names it on its own.
save("Default.jpg", execFileSync("convert", ["png:-", "-quality", "88", "jpeg:-"], { input: png(WIDTH, HEIGHT, meadow) }));

// Contact pictures: a head and shoulders on a round ground.
const contactSize = 126;

function person(ground, figure) {
  const inside = (dx, dy, radius) => clamp(radius - Math.hypot(dx, dy) + 0.5);
  return (x, y) => {
    const [dx, dy] = [x - contactSize / 2 + 0.5, y - contactSize / 2 + 0.5];
    const body = Math.max(inside(dx, dy + 17, 20), inside(dx / 1.25, dy - 48, 36));
    return blend([240, 240, 242], blend(ground, figure, body), inside(dx, dy, 60));
  };
}

const people = [
  [[52, 108, 168], [232, 240, 248]],
  [[58, 132, 96], [234, 246, 238]],
  [[150, 92, 48], [250, 242, 232]],
];
people.forEach(([ground, figure], i) => save(`contact-image/Contact${i + 1}.png`, png(contactSize, contactSize, person(ground, figure))));
// Outside the folder of the choices: the lists name it on their own.
save("default_contact_image.png", png(contactSize, contactSize, person([128, 134, 142], [226, 229, 233])));
