// The page is whole without this: it adds buttons to copy, and says of each byte what it is.
'use strict';

function add(parent, name, className, text) {
  const element = document.createElement(name);
  element.className = className;
  element.textContent = text;
  parent.append(element);
  return element;
}

async function copy(code, said) {
  try {
    await navigator.clipboard.writeText(code.textContent);
    said.textContent = ' Copied.';
  } catch {
    getSelection().selectAllChildren(code);
    said.textContent = ' Selected: press Ctrl+C to copy.';
  }
}

for (const command of document.querySelectorAll('pre.command')) {
  const line = document.createElement('p');
  command.after(line);
  const button = add(line, 'button', '', 'Copy the command');
  button.type = 'button';
  const said = add(line, 'span', 'said', '');
  said.setAttribute('role', 'status');
  button.addEventListener('click', () => copy(command.querySelector('code'), said));
}

// What the table of fields says of one, part by part.
function wordsOf(rows) {
  return rows.map((row) => {
    const [offset, size, name, value, clause] = [...row.cells].map((cell) => cell.textContent);
    const place = ['offset ' + offset, size, clause].filter(Boolean).join(', ');
    return name + (value ? ' = ' + value : '') + '\n  ' + place;
  }).join('\n');
}

// Cells lie beside one another; the one that holds a column of the line above or below is next.
function cellAt(line, column) {
  const cells = [...line.cells].slice(1);
  let end = 0;
  return cells.find((cell) => (end += cell.colSpan) > column) || cells.at(-1);
}

function columnOf(cell) {
  let column = 0;
  for (let before = cell.previousElementSibling; before.dataset.field; before = before.previousElementSibling) {
    column += before.colSpan;
  }
  return column;
}

class ByteMap {
  constructor(record) {
    this.table = record.querySelector('table.bytes');
    this.cells = [...this.table.querySelectorAll('td')];
    this.rows = [...record.querySelectorAll('.fields tr[data-field]')];
    this.readout = document.createElement('p');
    this.readout.className = 'readout';
    this.readout.setAttribute('role', 'status');
    this.readout.textContent = 'Point at a byte, or go through them with the arrow keys.';
    this.table.parentElement.after(this.readout);
    this.table.setAttribute('role', 'grid');
    this.cells.forEach((cell, index) => {
      cell.tabIndex = index === 0 ? 0 : -1;
      cell.removeAttribute('title');
      cell.addEventListener('focus', () => this.show(cell));
      cell.addEventListener('pointerenter', () => this.show(cell));
    });
    this.table.addEventListener('keydown', (event) => this.onKey(event));
  }

  show(cell) {
    const isOf = (each) => each.dataset.field === cell.dataset.field;
    for (const each of [...this.cells, ...this.rows]) each.classList.toggle('shown', isOf(each));
    this.readout.textContent = wordsOf(this.rows.filter(isOf)) || 'Of a field that is not shown.';
  }

  next(cell, key) {
    const at = this.cells.indexOf(cell);
    const line = cell.parentElement;
    switch (key) {
      case 'ArrowLeft': return this.cells[at - 1];
      case 'ArrowRight': return this.cells[at + 1];
      case 'ArrowUp': return line.previousElementSibling ? cellAt(line.previousElementSibling, columnOf(cell)) : null;
      case 'ArrowDown': return line.nextElementSibling ? cellAt(line.nextElementSibling, columnOf(cell)) : null;
      case 'Home': return this.cells[0];
      case 'End': return this.cells.at(-1);
      default: return undefined;
    }
  }

  onKey(event) {
    if (event.ctrlKey || event.altKey || event.metaKey) return;
    const cell = this.next(event.target, event.key);
    if (cell === undefined) return;
    event.preventDefault();
    if (cell === null) return;
    event.target.tabIndex = -1;
    cell.tabIndex = 0;
    cell.focus();
  }
}

for (const record of document.querySelectorAll('details.record')) {
  if (record.querySelector('table.bytes td')) new ByteMap(record);
}

// What is folded goes on paper too.
addEventListener('beforeprint', () => {
  for (const details of document.querySelectorAll('details')) details.open = true;
});
