// Pages by zrinspect, a browser to open them, and what they may not do there.

import assert from 'node:assert/strict';
import {execFileSync, spawnSync} from 'node:child_process';
import {after} from 'node:test';
import {pathToFileURL} from 'node:url';
import {launch, loadFrom} from './launch.mjs';

const {ZRINSPECT, SAMPLES, FFMPEG, MODULES, FOLDER} = process.env;
const axeSource = loadFrom(MODULES)('axe-core').source;
const browser = await launch(MODULES);
after(() => browser.close());

export const folder = FOLDER;
export const sample = (name) => `${SAMPLES}/${name}`;
export const ffmpeg = (...words) => execFileSync(FFMPEG, ['-v', 'error', '-y', ...words]);

// The page about these files and options.
export function write(name, ...words) {
  const path = `${FOLDER}/${name}.html`;
  const {status} = spawnSync(ZRINSPECT, ['-q', '--force', '--html', path, ...words]);
  assert.ok(status === 0 || status === 1, `status ${status}`);  // 1: a file is unreadable
  return path;
}

// What a file brought in would show as: it ran, it asks for something, or it is markup of its own.
function strangeParts() {
  const mine = {script: 1, style: 1, meta: 5, link: 1, base: 0, iframe: 0, object: 0, embed: 0, form: 0};
  const found = globalThis.zrHit ? ['ran'] : [];
  for (const [name, most] of Object.entries(mine)) {
    if (document.querySelectorAll(name).length > most) found.push(`a further ${name}`);
  }
  for (const element of document.querySelectorAll('*')) {
    for (const {name, value} of element.attributes) {
      const isLink = ['href', 'src', 'action', 'formaction', 'xlink:href'].includes(name);
      if (/^on|^style$/.test(name) || (isLink && !/^(#|data:(image\/|,))/.test(value))) {
        found.push(`${element.localName} ${name}=${value}`);
      }
    }
  }
  return found;
}

// Opens a page, has somebody look at it, and says what it did that no page may do.
export async function offencesOf(path, options, look) {
  const page = await browser.newPage({viewport: {width: 1280, height: 900}, ...options});
  const offences = [];
  const url = pathToFileURL(path).href;
  page.on('console', (line) => offences.push(`console: ${line.text()}`));
  page.on('pageerror', (error) => offences.push(`error: ${error}`));
  page.on('popup', () => offences.push('a window'));
  page.on('dialog', (dialog) => { offences.push('a dialog'); dialog.dismiss(); });
  page.on('request', (request) => {
    if (request.url().split('#')[0] !== url) offences.push(`request: ${request.url()}`);
  });
  await page.goto(url);
  await look(page);
  offences.push(...await page.evaluate(strangeParts));
  await page.close();
  return offences;
}

export async function visit(path, options, look) {
  assert.deepEqual(await offencesOf(path, options, look), [], path);
}

export const unfold = (page) => page.evaluate(() => {
  for (const each of document.querySelectorAll('details')) each.open = true;
});

// Its policy refuses axe, so that needs a context without it.
export async function expectAccessible(path, options) {
  const page = await browser.newPage({viewport: {width: 1280, height: 900}, bypassCSP: true, ...options});
  await page.goto(pathToFileURL(path).href);
  await unfold(page);
  await page.evaluate(axeSource);
  const {violations} = await page.evaluate(() => globalThis.axe.run(document, {resultTypes: ['violations']}));
  await page.close();
  const grave = violations.filter(({impact}) => ['serious', 'critical'].includes(impact));
  assert.deepEqual(grave.map(({id, nodes}) => [id, nodes.length, nodes[0].html, nodes[0].failureSummary]), [], path);
}
