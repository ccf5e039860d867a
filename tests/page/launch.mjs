// Debian's Chromium, which asks nobody for anything, and the driver in the folder of modules.

import {createRequire} from 'node:module';

export const loadFrom = (modules) => createRequire(`${modules}/`);

export const launch = (modules) => loadFrom(modules)('playwright-core').chromium.launch({
  executablePath: '/usr/bin/chromium',
  args: ['--headless', '--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run',
    '--disable-background-networking', '--disable-component-update', '--disable-sync'],
});
