// compare.mjs ORIGINALS COPIES: compares MSG files with their copies as a reader that isn't ours sees them. Prints each
// difference and each original that has no copy; ends with 1 if there was a difference, or nothing to compare.
import fs from "node:fs";
import path from "node:path";
import module from "@kenjiuno/msgreader";
const MsgReader = module.default ?? module;

const [originals, copies] = process.argv.slice(2);

function attachment(reader, each) {
  if (each.innerMsgContent) return { message: facts(reader, each.innerMsgContentFields) };
  const { fileName, contentLength } = each;
  // The reader can't give the content of one that has none.
  const content = contentLength === undefined ? undefined : reader.getAttachment(each).content;
  return { fileName, content: content && Buffer.from(content).toString("base64") };
}

function facts(reader, message) {
  const { messageClass, subject, body, senderName, senderEmail, importance, recipients, attachments } = message;
  return {
    messageClass,
    subject,
    body,
    senderName,
    senderEmail,
    importance,
    start: message.apptStartWhole,
    series: message.apptRecur,
    recipients: recipients.map(({ name, email, recipType }) => ({ name, email, recipType })),
    attachments: attachments.map((each) => attachment(reader, each)),
  };
}

function read(file) {
  const reader = new MsgReader(fs.readFileSync(file));
  const message = reader.getFileData();
  return message.error ? undefined : facts(reader, message);
}

let compared = 0;
let differences = 0;
for (const name of fs.readdirSync(originals).filter((each) => each.endsWith(".msg"))) {
  const copy = path.join(copies, name.replace(/\.msg$/, ".MSG"));
  const expected = read(path.join(originals, name));
  if (!expected || !fs.existsSync(copy)) {
    // Notes have no message until they are saved; a damaged file is refused.
    const mayBe = !expected || expected.messageClass === "IPM.StickyNote" || name.startsWith("damaged");
    console.log(`${name}: not copied${mayBe ? ", as it should be" : ""}`);
    differences += mayBe ? 0 : 1;
    continue;
  }
  const actual = read(copy);
  ++compared;
  // A body that the original has in another form only comes as plain text too.
  for (const key of Object.keys(expected).filter((each) => expected[each] !== undefined)) {
    const [was, is] = [expected, actual].map((each) => JSON.stringify(each?.[key]));
    if (was !== is) {
      console.log(`${name}: ${key} is ${is?.slice(0, 200)}, not ${was?.slice(0, 200)}`);
      ++differences;
    }
  }
}
console.log(`${compared} compared, ${differences} differences`);
process.exitCode = differences || !compared ? 1 : 0;
