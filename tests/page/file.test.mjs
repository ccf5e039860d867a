// The page about files: strangers' text is text, and everybody can read it.

import assert from 'node:assert/strict';
import {copyFileSync, mkdirSync, writeFileSync} from 'node:fs';
import {test} from 'node:test';
import {expectAccessible, ffmpeg, folder, offencesOf, sample, unfold, visit, write} from './browser.mjs';

const video = write('video', sample('video.mp4'));
const few = write('few', '--keys', '--log', '--device', 'bare', ...['video-10bit.mp4', 'audio.mp3'].map(sample));
const all = write('all', '--keys', '--log', ...['audio.aac', 'audio.aiff', 'audio.m4a', 'audio.mp3', 'audio.ogg',
  'video.avi', 'video.h264', 'video.hevc', 'video.mkv', 'video.mp4'].map(sample));

// What would run if it got out of an element, an attribute, a style, a script or a template.
const kMischief = [
  '<script>zrHit=1</script>', '<img src=x onerror=zrHit=1>', '"><svg onload=zrHit=1>', "' autofocus onfocus='zrHit=1",
  '</style><script>zrHit=1</script>', '--></title></script><script>zrHit=1</script>', 'javascript:zrHit=1',
  '{{{title}}}<iframe src=//example.org>', '&lt;script&gt;', '<base href=//example.org>',
];

function hostileFiles() {
  const names = ['title', 'artist', 'album', 'genre', 'comment', 'composer'];
  const made = ['mp3', 'flac', 'ogg', 'mkv'].map((ending, turn) => {
    const path = `${folder}/<img src=x onerror=zrHit=1>' onfocus='zrHit=1' x="" onfocus="zrHit=1.${ending}`;
    const tags = names.flatMap((name, at) => ['-metadata', `${name}=${kMischief[(at + turn * 3) % kMischief.length]}`]);
    ffmpeg('-f', 'lavfi', '-i', 'sine', '-t', '0.2', ...tags, '-metadata',
      `${kMischief[turn].replace(/=/g, ' ')}=${kMischief[turn]}`, path);
    return path;
  });
  mkdirSync(`${folder}/a<`);
  copyFileSync(sample('video.mp4'), `${folder}/a</style><script>zrHit=1;`);
  return [...made, `${folder}/a</style><script>zrHit=1;`, `${folder}/a</title><script>zrHit=1;`];
}

function hostileDevice() {
  const path = `${folder}/"><svg onload=zrHit=1>.xml`;
  const named = (type) => `<MediaCodec name="&lt;img src=x onerror=zrHit=1&gt;${type}" type="${type}"/>`;
  writeFileSync(path, `<MediaCodecs><Decoders>${['audio/mpeg', 'video/avc'].map(named)}</Decoders></MediaCodecs>`);
  return path;
}

test('Nothing of a file runs, asks for anything or becomes markup', async () => {
  const hostile = write('hostile', '--keys', '--log', '--device', hostileDevice(), ...hostileFiles());
  for (const options of [{}, {bypassCSP: true}]) {
    await visit(hostile, options, async (page) => {
      await unfold(page);
      const text = await page.locator('body').textContent();
      for (const each of kMischief) assert.ok(text.includes(each), each);
      await page.evaluate(() => {
        for (const link of document.querySelectorAll('a')) link.click();
        for (const byte of document.querySelectorAll('td[data-field]')) byte.focus();
      });
    });
  }
});

test('The policy refuses scripts and loads that got in all the same', async () => {
  const offences = await offencesOf(video, {}, async (page) => {
    await page.evaluate(() => {
      const strange = '<i onclick="zrHit=1" style="color: red"></i><img src="http://localhost/">';
      document.body.insertAdjacentHTML('beforeend', strange);
      document.querySelector('i').click();
      document.body.append(Object.assign(document.createElement('script'), {textContent: 'zrHit = 1'}));
      return fetch('http://localhost/').catch(() => {});
    });
  });
  for (const refused of ['inline event handler', 'inline style', 'inline script', 'the image', 'Connecting']) {
    assert.ok(offences.some((each) => each.startsWith('console: ') && each.includes(refused)), refused);
  }
  for (const seen of ['a further script', 'i onclick=zrHit=1', 'img src=http://localhost/']) {
    assert.ok(offences.includes(seen), seen);
  }
  assert.ok(!offences.includes('ran'));
});

test('A byte says what it is: to a pointer, to a keyboard, and aloud', async () => {
  await visit(video, {}, async (page) => {
    const record = page.locator('details.record').first();
    const said = record.locator('[role=status]');
    const bytes = record.locator('td[data-field]');
    // ISO/IEC 14496-15 5.3.3.1.2: the version is 1, then the profile: 100 is High.
    await bytes.nth(1).hover();
    assert.match(await said.textContent(), /^AVCProfileIndication = 100 \(High\)/);
    assert.equal(await record.locator('td.shown').count(), 1);
    await record.locator('.scroll').first().focus();
    await page.keyboard.press('Tab');
    const walk = {'': /^configurationVersion = 1\n/, ArrowRight: /^AVCProfileIndication/, End: /\w = /,
      Home: /^configurationVersion/, ArrowDown: /\w = /, ArrowUp: /^configurationVersion/};
    for (const [key, words] of Object.entries(walk)) {
      if (key) await page.keyboard.press(key);
      assert.match(await said.textContent(), words, key);
      assert.ok(await page.evaluate(() => document.activeElement.matches('td.shown:focus-visible')), key);
    }
    // One stop of Tab for all of its bytes.
    await page.keyboard.press('Tab');
    assert.ok(await page.evaluate(() => !document.activeElement.matches('td')));
  });
});

test('What hovering shows stands there without scripts, and folds open', async () => {
  await visit(few, {javaScriptEnabled: false}, async (page) => {
    const record = page.locator('details.record').first();
    assert.match(await record.locator('td[data-field]').nth(1).getAttribute('title'), /^AVCProfileIndication = 110/);
    await record.locator('.fields summary').click();
    assert.match(await record.locator('.fields table').innerText(), /AVCProfileIndication\s+110/);
    assert.match(await page.locator('pre.command').first().innerText(), /^ffmpeg /);
    assert.equal(await page.locator('button').count(), 0);
  });
});

const kLooks = {
  wide: {}, dark: {colorScheme: 'dark'}, narrow: {viewport: {width: 360, height: 740}},
  'without colours': {forcedColors: 'active'}, printed: {colorScheme: 'dark'},
};
const kOfAll = ['wide', 'narrow'];
const kJudged = ['dark', ...kOfAll];
for (const [name, options] of Object.entries(kLooks)) {
  test(`Fits and can be read: ${name}`, async () => {
    for (const path of kOfAll.includes(name) ? [few, all] : [few]) {
      await visit(path, options, async (page) => {
        if (name === 'printed') {
          assert.ok((await page.pdf()).length > 20000);
          assert.equal(await page.locator('details:not([open])').count(), 0);
          await page.emulateMedia({media: 'print'});
          assert.equal(await page.locator('button:visible').count(), 0);
        }
        await unfold(page);
        const [wide, room] = await page.evaluate(() => [document.documentElement.scrollWidth, innerWidth]);
        assert.ok(wide <= room, `${wide} > ${room}`);
        const words = await page.locator('.verdict').allInnerTexts();
        for (const each of words) assert.match(each, /\w{4}/);
        if (name !== 'without colours') return;
        await page.locator('td[data-field]').first().focus();
        const drawn = await page.locator('td.shown').first().evaluate((td) => getComputedStyle(td).outlineStyle);
        assert.notEqual(drawn, 'none');
      });
    }
    if (kJudged.includes(name)) await expectAccessible(few, options);
  });
}
