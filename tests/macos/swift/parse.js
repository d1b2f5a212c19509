// parse.js FILE...: says where the Swift grammar finds no sense in the files. The modules lie where NODE_PATH tells.
const fs = require('fs');
const Parser = require('tree-sitter');
const Swift = require('tree-sitter-swift');

const parser = new Parser();
parser.setLanguage(Swift);

function mistakes(node) {
  if (node.isError || node.isMissing) return [node];
  return node.hasError ? node.children.flatMap(mistakes) : [];
}

let status = 0;
for (const path of process.argv.slice(2)) {
  // In pieces: the parser takes no text of 32 KiB and more at once.
  const text = fs.readFileSync(path, 'utf8');
  const root = parser.parse((index) => text.slice(index, index + 4096)).rootNode;
  for (const node of mistakes(root)) {
    const {row, column} = node.startPosition;
    console.log(`${path}:${row + 1}:${column + 1}: error: no Swift`);
    status = 1;
  }
  if (root.hasError) status = 1;
  if (root.endIndex === 0) {
    console.log(`${path}: error: empty`);
    status = 1;
  }
}
process.exit(status);
