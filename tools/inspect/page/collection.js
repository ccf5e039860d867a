// The table of files is whole without this: it adds buttons that sort it, and a form that filters it.

const kRanks = ['plays', 'plays in part', 'does not play', 'no parser', 'unreadable', 'not asked'];

const kGroup = 50;  // rows

function secondsOf(text) {
  return text.replace(' s', '').split(':').reduce((sum, part) => sum * 60 + Number(part), 0);
}

// What stands for a cell when rows are sorted; null comes last, either way.
const kKeys = {
  text: (cell) => cell.textContent.toLowerCase() || null,
  codecs: (cell) => cell.textContent || null,
  verdict: (cell) => kRanks.indexOf(cell.firstChild.data),
  time: (cell) => (cell.textContent ? secondsOf(cell.textContent) : null),
  number: (cell) => (cell.textContent ? Number(cell.textContent.replaceAll(',', '')) : null),
};

function compare(a, b) {
  if (a === b) return 0;
  return a > b ? 1 : -1;
}

class FileTable {
  constructor(table) {
    this.table = table;
    this.heads = [...table.tHead.rows[0].cells];
    this.rows = [...table.tBodies].flatMap((body) => [...body.rows]);
    this.order = this.rows.map((row, index) => index);
    this.keys = [];
    this.columns = this.heads.flatMap((head, index) => (head.dataset.sort === 'verdict' ? [index] : []));
    this.readVerdicts();
    this.addRoles();
    this.addButtons();
    this.addFilters();
    const style = document.styleSheets[0];
    style.insertRule(`.list { --devices: ${this.columns.length}; }`, style.cssRules.length);
    this.say(this.rows.length);
  }

  // Of each row for each device: the verdict, and what its tracks add.
  readVerdicts() {
    this.verdicts = this.rows.map((row) => this.columns.map((index) => {
      const [verdict, details] = row.cells[index].childNodes;
      return [verdict.data, details ? details.textContent.split(', ') : []];
    }));
    const codecs = this.heads.findIndex((head) => head.dataset.sort === 'codecs');
    this.codecs = this.rows.map((row) => row.cells[codecs].textContent.split(' + '));
  }

  // Rows that are no table rows to the style keep what they are to others.
  addRoles() {
    this.table.role = 'table';
    for (const part of [this.table.tHead, ...this.table.tBodies]) part.role = 'rowgroup';
    for (const row of [this.table.tHead.rows[0], ...this.rows]) row.role = 'row';
    for (const head of this.heads) head.role = 'columnheader';
    const names = this.heads.map((head) => head.textContent);
    for (const row of this.rows) {
      let index = 0;
      for (const cell of row.cells) {
        cell.role = index ? 'cell' : 'rowheader';
        if (this.columns.length > 1 ? this.columns.includes(index) : false) cell.dataset.of = names[index];
        index++;
      }
    }
  }

  addButtons() {
    this.heads.forEach((head, index) => {
      const button = document.createElement('button');
      button.type = 'button';
      button.append(...head.childNodes);
      head.append(button);
      button.addEventListener('click', () => this.sort(index));
    });
  }

  addSelect(form, name, words) {
    const label = add(form, 'label', '', name + ' ');
    const select = add(label, 'select', '', '');
    select.setAttribute('aria-label', name);
    add(select, 'option', '', 'any').value = '';
    for (const [value, text] of words) add(select, 'option', '', text).value = value;
    select.addEventListener('change', () => this.filter());
    return select;
  }

  addFilters() {
    const form = document.createElement('div');
    form.className = 'filters';
    form.setAttribute('role', 'search');
    const label = add(form, 'label', '', 'search ');
    this.search = add(label, 'input', '', '');
    this.search.type = 'search';
    this.search.addEventListener('input', () => this.filter());
    const each = (words) => [...new Set(words)].sort().filter(Boolean).map((word) => [word, word]);
    const cells = this.verdicts.flat();
    const seen = new Set(cells.map(([verdict]) => verdict));
    const verdicts = kRanks.filter((verdict) => seen.has(verdict)).map((word) => [word, word]);
    if (this.columns.length > 1) verdicts.push(['differs', 'differs between devices']);
    this.verdict = this.addSelect(form, 'verdict', verdicts);
    this.why = this.addSelect(form, 'why', each(cells.flatMap(([, details]) => details)));
    this.codec = this.addSelect(form, 'codec', each(this.codecs.flat()));
    const names = this.columns.map((column, index) => [index, this.heads[column].textContent]);
    this.device = names.length > 1 ? this.addSelect(form, 'device', names) : { value: '' };
    const button = add(form, 'button', '', 'Show all');
    button.type = 'button';
    button.addEventListener('click', () => {
      for (const each of [this.search, this.verdict, this.why, this.codec, this.device]) each.value = '';
      this.filter();
    });
    this.said = add(form, 'output', '', '');
    this.table.parentElement.before(form);
  }

  say(shown) {
    const all = this.rows.length.toLocaleString('en');
    this.said.textContent = shown === this.rows.length ? `All ${all} files are shown.`
      : `${shown.toLocaleString('en')} of ${all} files are shown.`;
  }

  isShown(index, text) {
    const all = this.verdicts[index];
    const asked = this.device.value ? [all[this.device.value]] : all;
    const verdict = this.verdict.value;
    const isDifferent = () => all.some(([each]) => each !== all[0][0]);
    if (verdict === 'differs' ? !isDifferent() : false) return false;
    if (['', 'differs'].includes(verdict) ? false : !asked.some(([each]) => each === verdict)) return false;
    if (this.why.value ? !asked.some(([, details]) => details.includes(this.why.value)) : false) return false;
    if (this.codec.value ? !this.codecs[index].includes(this.codec.value) : false) return false;
    return text ? this.texts[index].includes(text) : true;
  }

  filter() {
    const text = this.search.value.toLowerCase();
    if (text) this.texts ??= this.rows.map((row) => row.textContent.toLowerCase());
    const shown = this.order.filter((index) => this.isShown(index, text));
    this.place(shown);
    this.say(shown.length);
  }

  // Out of the page, where rows move freely; those that come in sight first are there at once.
  place(shown) {
    clearTimeout(this.timer);
    for (const body of [...this.table.tBodies]) body.remove();
    this.placeFrom(shown, 0, 4);
  }

  // In groups, as the style wants them.
  placeFrom(shown, first, groups) {
    const end = first + groups * kGroup;
    for (let at = first; Math.min(end, shown.length) > at; at += kGroup) {
      const body = document.createElement('tbody');
      body.role = 'rowgroup';
      body.append(...shown.slice(at, at + kGroup).map((index) => this.rows[index]));
      this.table.append(body);
    }
    if (shown.length > end) this.timer = setTimeout(() => this.placeFrom(shown, end, 20));
  }

  sort(column) {
    const head = this.heads[column];
    const isDown = head.getAttribute('aria-sort') === 'ascending';
    for (const each of this.heads) each.removeAttribute('aria-sort');
    head.setAttribute('aria-sort', isDown ? 'descending' : 'ascending');
    const keyOf = kKeys[head.dataset.sort];
    const keys = this.keys[column] ??= this.rows.map((row) => keyOf(row.cells[column]));
    const sign = isDown ? -1 : 1;
    const all = [...keys.keys()];
    const known = all.filter((index) => keys[index] !== null);
    known.sort((a, b) => sign * compare(keys[a], keys[b]));
    this.order = known.concat(all.filter((index) => keys[index] === null));
    this.filter();
  }
}

for (const table of document.querySelectorAll('table.list')) new FileTable(table);
