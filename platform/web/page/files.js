// What players write: kept in this browser's own storage, put back in its place before the game starts, shown in a
// panel from which it can be downloaded, and joined by what is dropped onto the page.
'use strict';

const Files = (() => {
  const kFolder = '/game/';
  const kRecording = 'recording.input';  // of this visit, while it lasts
  const kRecordings = 5;
  const kRecordingPeriod = 5000;  // milliseconds
  const kLargest = 64 * 1024 * 1024;  // bytes of a file that is dropped; the game reads no larger picture
  let database = null;
  let complained = false;
  let asked = false;
  const shipped = new Map();  // path -> bytes, which come back when the player's own of that name goes
  const kept = new Map();  // path under the folder -> size in bytes

  const element = (id) => document.getElementById(id);

  function complain(what, error) {
    console.log(`${what}: ${error && error.message || error}`);
    if (complained) return;
    complained = true;
    element('fileMessage').textContent =
        'This browser does not keep files, so download what you want to have tomorrow.';
  }

  function open() {
    return new Promise((resolve) => {
      const request = indexedDB.open('brinewhirl', 1);
      request.onupgradeneeded = () => request.result.createObjectStore('files');
      request.onsuccess = () => { database = request.result; resolve(); };
      request.onerror = () => { complain('storage', request.error); resolve(); };
    }).catch((error) => complain('storage', error));
  }

  function change(what, act) {
    if (database === null) return complain(what, 'no storage');
    const transaction = database.transaction('files', 'readwrite');
    transaction.onerror = transaction.onabort = () => complain(what, transaction.error);
    act(transaction.objectStore('files'));
  }

  function readAll() {
    return new Promise((resolve) => {
      const files = new Map();
      if (database === null) return resolve(files);
      const request = database.transaction('files').objectStore('files').openCursor();
      request.onsuccess = () => {
        const cursor = request.result;
        if (cursor === null) return resolve(files);
        files.set(cursor.key, cursor.value);
        cursor.continue();
      };
      request.onerror = () => { complain('storage', request.error); resolve(files); };
    });
  }

  function makeFoldersOf(path) {
    const parts = path.split('/').slice(0, -1);
    let folder = kFolder.slice(0, -1);
    for (const part of parts) {
      folder += '/' + part;
      if (!FS.analyzePath(folder).exists) FS.mkdir(folder);
    }
  }

  function place(path, bytes) {
    makeFoldersOf(path);
    FS.writeFile(kFolder + path, bytes);
  }

  const nameUnder = (path) => {
    const whole = FS.lookupPath(path, {parent: true}).path;
    const full = whole.replace(/\/$/, '') + '/' + path.slice(path.lastIndexOf('/') + 1);
    return full.startsWith(kFolder) ? full.slice(kFolder.length) : null;
  };

  // Browsers may make room by throwing away what a page keeps, unless asked not to; some put the question to the player.
  function askToPersist() {
    if (asked || !navigator.storage || !navigator.storage.persist) return;
    asked = true;
    navigator.storage.persist();
  }

  function keep(path) {
    const bytes = FS.readFile(kFolder + path);
    const isNew = !kept.has(path);
    kept.set(path, bytes.length);
    change(path, (store) => store.put(bytes, path));
    if (!path.startsWith('recordings/')) askToPersist();
    if (isNew) show();  // a list that is made anew takes buttons away from under the mouse
  }

  function forget(path) {
    if (!kept.delete(path)) return;
    change(path, (store) => store.delete(path));
    show();
  }

  // The game writes a file beside its place and renames it when it is whole; that is when it is kept.
  function watch() {
    const rename = FS.rename;
    FS.rename = (from, to) => {
      rename(from, to);
      const name = nameUnder(to);
      if (name !== null) keep(name);
    };
    const unlink = FS.unlink;
    FS.unlink = (path) => {
      const name = nameUnder(path);
      unlink(path);
      if (name !== null) forget(name);
    };
  }

  // Before the program runs: what ships, and over it what the player has.
  function restore(index, data, stored) {
    FS.mkdir(kFolder.slice(0, -1));
    for (const {name, start, end} of index) {
      shipped.set(name, data.subarray(start, end));
      place(name, shipped.get(name));
    }
    for (const [path, bytes] of stored) {
      place(path, bytes);
      kept.set(path, bytes.length);
    }
    watch();
    show();
  }

  // The last five visits' recordings, as far as each has come: a tab that is closed has no time left for its storage, so
  // it is kept now and then. The game writes them without renaming anything.
  function keepRecordings() {
    const now = new Date().toISOString().slice(0, 19).replace(/:/g, '-');
    const name = `recordings/${now}.input`;
    const write = () => {
      if (!FS.analyzePath(kFolder + kRecording).exists) return;
      place(name, FS.readFile(kFolder + kRecording));
      keep(name);
      const visits = [...kept.keys()].filter((path) => /^recordings\/\d{4}-\d\d-\d\dT/.test(path)).sort();
      for (const old of visits.slice(0, -kRecordings)) FS.unlink(kFolder + old);
    };
    setInterval(write, kRecordingPeriod);
    document.addEventListener('visibilitychange', () => { if (document.hidden) write(); });
  }

  function download(path) {
    const link = document.createElement('a');
    link.href = URL.createObjectURL(new Blob([FS.readFile(kFolder + path)]));
    link.download = path.slice(path.lastIndexOf('/') + 1);
    link.click();
    setTimeout(() => URL.revokeObjectURL(link.href), 60000);
  }

  function remove(path) {
    FS.unlink(kFolder + path);
    if (shipped.has(path)) place(path, shipped.get(path));
  }

  function show() {
    const list = element('fileList');
    list.replaceChildren(...[...kept.keys()].sort().map((path) => {
      const row = document.createElement('li');
      const name = document.createElement('span');
      name.textContent = `${path} (${kept.get(path)} bytes)`;
      const fetchIt = document.createElement('button');
      fetchIt.textContent = 'Download';
      fetchIt.onclick = () => download(path);
      const removeIt = document.createElement('button');
      removeIt.textContent = 'Delete';
      removeIt.onclick = () => { if (confirm(`Delete ${path}?`)) remove(path); };
      row.append(name, fetchIt, removeIt);
      if (path.endsWith('.input')) {
        const watchIt = document.createElement('a');
        watchIt.textContent = 'Watch';
        watchIt.href = '?play=' + encodeURIComponent(path);
        row.append(watchIt);
      }
      return row;
    }));
    if (kept.size === 0) list.textContent = 'Nothing yet. The editor (F1) saves levels here.';
  }

  // A picture goes where levels look for pictures, a recording to the others; everything else is a level, under its own
  // name.
  async function add(file) {
    if (!/^[A-Za-z0-9][A-Za-z0-9._ -]*$/.test(file.name) || file.size > kLargest)
      return `${file.name} was not taken: its name must be plain, and it may have 64 MB at most.`;
    const folder = /\.png$/i.test(file.name) ? 'Texture/' : /\.input$/i.test(file.name) ? 'recordings/' : '';
    const path = folder + file.name;
    const bytes = new Uint8Array(await file.arrayBuffer());
    place(path, bytes);
    keep(path);
    return folder === '' ? `${path} is there: load it by this name in the editor (F1).` : `${path} is there.`;
  }

  function takeDrops() {
    addEventListener('dragover', (event) => {
      event.preventDefault();
      document.body.classList.add('dropping');
    });
    addEventListener('dragleave', () => document.body.classList.remove('dropping'));
    addEventListener('drop', async (event) => {
      event.preventDefault();
      document.body.classList.remove('dropping');
      const said = [];
      for (const file of event.dataTransfer.files) said.push(await add(file));
      element('fileMessage').textContent = said.join(' ');
      element('files').hidden = false;
    });
  }

  function wire() {
    element('filesButton').hidden = false;
    element('filesButton').onclick = () => {
      show();
      element('files').hidden = false;
    };
    element('filesClose').onclick = () => {
      element('files').hidden = true;
      element('canvas').focus();
    };
    takeDrops();
    if (Module.arguments.length === 0) keepRecordings();
  }

  return {open, readAll, restore, wire, add};
})();
