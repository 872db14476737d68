// Loads the game, tells how far it is, and stands between it and the browser: sound, keys, the tab that is left.
'use strict';

const canvas = document.getElementById('canvas');
const message = document.getElementById('message');
const progress = document.getElementById('progress');

function stop(text) {
  message.textContent = text;
  progress.hidden = true;
  document.getElementById('cover').hidden = false;
}

const megabytes = (bytes) => (bytes / 1e6).toFixed(1);

async function fetchFile(name, counted) {
  const response = await fetch(name);
  if (!response.ok) throw new Error(`${name}: ${response.status} ${response.statusText}`);
  const reader = response.body.getReader();
  const parts = [];
  let length = 0;
  for (;;) {
    const {done, value} = await reader.read();
    if (done) break;
    parts.push(value);
    length += value.length;
    counted(value.length);
  }
  const whole = new Uint8Array(length);
  let at = 0;
  for (const part of parts) {
    whole.set(part, at);
    at += part.length;
  }
  return whole;
}

async function fetchAll(manifest) {
  const total = manifest.files.reduce((sum, file) => sum + file.size, 0);
  let loaded = 0;
  const counted = (bytes) => {
    loaded += bytes;
    progress.value = Math.min(1, loaded / total);
    message.textContent = `Loading: ${megabytes(loaded)} of ${megabytes(total)} MB`;
  };
  counted(0);
  return Promise.all(manifest.files.map((file) => fetchFile(`${file.name}?${manifest.version}`, counted)));
}

function addScript(name) {
  return new Promise((resolve, reject) => {
    const script = document.createElement('script');
    script.src = name;
    script.onload = resolve;
    script.onerror = () => reject(new Error(`${name} cannot be loaded`));
    document.body.append(script);
  });
}

// Browsers start sound with the first click or key, on which the sound library waits by itself. A tab that nobody sees
// draws no frames, so its music would run out of what was decoded ahead: it stands still, as the game does.
function holdSoundWhileHidden() {
  document.addEventListener('visibilitychange', () => {
    const sound = window.AL && AL.currentCtx && AL.currentCtx.audioCtx;
    if (!sound || !navigator.userActivation.hasBeenActive) return;
    document.hidden ? sound.suspend() : sound.resume();
  });
}

// F1 to F8, the arrows and the keys that write are kept from the browser by the game's window library. Escape is added,
// and what the game has no use for is given back.
function shareKeys() {
  canvas.addEventListener('keydown', (event) => {
    if (event.key === 'Escape') event.preventDefault();
    if (event.key === 'F11' || event.key === 'F12') event.stopImmediatePropagation();
  }, true);
  document.addEventListener('fullscreenchange', () => {
    if (document.fullscreenElement && navigator.keyboard && navigator.keyboard.lock)
      navigator.keyboard.lock(['Escape']).catch(() => {});
  });
  canvas.addEventListener('pointerdown', () => canvas.focus());
}

// The way to the files is seen while the mouse moves.
function showButtonWhilePointing() {
  let timer = 0;
  addEventListener('pointermove', () => {
    document.body.classList.add('pointing');
    clearTimeout(timer);
    timer = setTimeout(() => document.body.classList.remove('pointing'), 2000);
  });
}

// ?play=FILE&frames=N shows a recording, or the first N frames of it, in the place of the game.
function readWish() {
  const wish = new URLSearchParams(location.search);
  const file = wish.get('play');
  return file === null ? [] : ['play', '/game/' + file, wish.get('frames') || '0'];
}

var Module = {
  canvas,
  arguments: readWish(),
  print: (text) => console.log(text),
  printErr: (text) => console.warn(text),
  onAbort: (what) => stop(`The game stopped: ${what}. Load the page again; what was saved is kept.`),
  onGameEnd: () => {
    stop(Module.arguments.length === 0 ? 'Thank you for playing.' : 'The recording ends here.');
    document.getElementById('again').hidden = false;
  },
};

async function start() {
  if (!document.createElement('canvas').getContext('webgl2')) {
    stop('This browser does not offer WebGL 2, without which the game cannot draw. Another browser will do, or this one ' +
         'with its hardware acceleration switched on.');
    return;
  }
  // A browser may keep files of an earlier build; those of one build belong together, so their addresses tell which.
  const manifest = await (await fetch('manifest.json', {cache: 'no-cache'})).json();
  const [program, data] = await fetchAll(manifest);
  message.textContent = 'Starting';
  await Files.open();
  const stored = await Files.readAll();
  Module.wasmBinary = program;
  Module.preRun = [() => Files.restore(manifest.index, data, stored)];
  Module.postRun = [() => {
    document.getElementById('cover').hidden = true;
    canvas.focus();
    Files.wire();
  }];
  shareKeys();
  holdSoundWhileHidden();
  showButtonWhilePointing();
  await addScript(`brinewhirl.js?${manifest.version}`);
}

document.getElementById('again').onclick = () => { location.search = ''; };
start().catch((error) => stop(`The game could not be loaded: ${error.message}`));
