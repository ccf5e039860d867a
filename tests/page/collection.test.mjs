// The page about many files: ten thousand rows sort and filter at once, also without a mouse.

import assert from 'node:assert/strict';
import {writeFileSync} from 'node:fs';
import {test} from 'node:test';
import {expectAccessible, folder, sample, visit, write} from './browser.mjs';

const kNone = '"><img src=x onerror=zrHit=1>';  // there are no files of these names
const names = [...['video.mp4', 'audio.mp3', 'audio.m4a', 'video-10bit.mp4'].map(sample),
  ...Array.from({length: 9996}, (_, at) => `${kNone}${(at * 7919) % 9996}`)];
writeFileSync(`${folder}/list`, names.join('\n'));
const large = write('large', '--device=phone', '--device=bare', '--files-from', `${folder}/list`);
const small = write('small', '--device=phone', '--device=bare', '--fix', '-j2', ...names.slice(0, 5));

const rowsOf = (page, count) => page.locator(`table.list tbody tr:nth-child(-n+${count}) th`).allTextContents();

async function timed(what, act) {
  const begin = performance.now();
  await act();
  assert.ok(performance.now() - begin < 1000, `${what}: ${performance.now() - begin} ms`);
}

test('Ten thousand rows sort and filter within a second, by the keyboard too', async () => {
  await visit(large, {}, async (page) => {
    const head = page.getByRole('columnheader', {name: 'file'});
    await head.getByRole('button').focus();
    for (const [order, sorted] of [['ascending', [...names].sort()], ['descending', [...names].sort().reverse()]]) {
      await timed(order, () => page.keyboard.press('Enter'));
      assert.equal(await head.getAttribute('aria-sort'), order);
      assert.deepEqual((await rowsOf(page, 50)).slice(0, 50), sorted.slice(0, 50));
    }
    const said = page.getByRole('status');
    await timed('search', () => page.getByLabel('search').fill('AUDIO.M'));
    assert.equal(await said.textContent(), '2 of 10,000 files are shown.');
    await timed('all', () => page.getByRole('button', {name: 'Show all'}).press('Enter'));
    await timed('verdict', () => page.getByRole('combobox', {name: 'verdict'}).selectOption('plays'));
    assert.equal(await said.textContent(), '2 of 10,000 files are shown.');
    await page.getByRole('combobox', {name: 'device'}).selectOption('bare');
    assert.equal(await said.textContent(), '1 of 10,000 files are shown.');
  });
});

test('Everybody can read it, without scripts too', async () => {
  await visit(large, {javaScriptEnabled: false}, async (page) => {
    assert.equal(await page.getByRole('row').filter({hasText: 'unreadable'}).count(), 9996);
  });
  for (const options of [{}, {colorScheme: 'dark'}, {viewport: {width: 360, height: 740}}]) {
    await expectAccessible(small, options);
  }
});
