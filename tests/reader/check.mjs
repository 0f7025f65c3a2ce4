// check.mjs MAILBOX EXPECTED: reads the MSG files of a mailbox folder with a reader that isn't ours, and compares
// what it finds with what is expected. Prints each difference; ends with 1 if there was one.
import fs from "node:fs";
import path from "node:path";
import module from "@kenjiuno/msgreader";
const MsgReader = module.default ?? module;

const [mailbox, expectedFile] = process.argv.slice(2);

const kFrequencies = { 0x200a: "daily", 0x200b: "weekly", 0x200c: "monthly", 0x200d: "yearly" };
const kPatterns = { 0: "day", 1: "week", 2: "month", 3: "month nth" };
const kEnds = { 0x2021: "by date", 0x2022: "after count", 0x2023: "never" };
const kDays = ["Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"];

/** Minutes since 1601, as the blob counts them, in ISO form. */
function dateTime(minutes) {
  return new Date(Date.UTC(1601, 0, 1) + minutes * 60000).toISOString().slice(0, 16).replace("T", " ");
}
const date = (minutes) => dateTime(minutes).slice(0, 10);
const time = (minutes) => dateTime(minutes).slice(11);
const days = (bits) => kDays.filter((_, day) => bits & (1 << day));

/** A decoded recurrence blob in words. */
function series({ recurrencePattern: pattern, startTimeOffset, endTimeOffset, exceptionInfo }) {
  const ends = kEnds[pattern.endType];
  const facts = {
    frequency: kFrequencies[pattern.recurFrequency],
    pattern: kPatterns[pattern.patternType],
    period: pattern.period,
    ends,
    starts: date(pattern.startDate),
    from: time(startTimeOffset),
    to: time(endTimeOffset),
    withoutDays: pattern.deletedInstanceDates.map(date),
    movedTo: exceptionInfo.map((each) => `${dateTime(each.startDateTime)}, ${each.location}`),
    movedFrom: exceptionInfo.map((each) => dateTime(each.originalStartTime)),
  };
  if (ends === "by date") facts.until = date(pattern.endDate);
  if (ends === "after count") facts.count = pattern.occurrenceCount;
  if (pattern.patternTypeWeek) facts.days = days(pattern.patternTypeWeek.dayOfWeekBits);
  if (pattern.patternTypeMonth) facts.day = pattern.patternTypeMonth.day;
  if (pattern.patternTypeMonthNth) {
    facts.days = days(pattern.patternTypeMonthNth.dayOfWeekBits);
    facts.nth = pattern.patternTypeMonthNth.n;
  }
  return facts;
}

/** A value as MSG files hold it: of a multi-valued property the reader gives the entries one by one. */
function plain(property) {
  const { propertyTag, value } = property;
  if (!(value instanceof Uint8Array)) return value;
  const bytes = Buffer.from(value);
  switch (propertyTag.slice(4)) {
    case "0005":
      return bytes.readDoubleLE();
    case "101f":
      return bytes.toString("utf16le").replace(/\0+$/, "");
    default:
      return bytes.toString("hex");
  }
}

/** A one-off entry id ([MS-OXCDATA] 2.2.5.1) as "name, type, address". */
function oneOff(hex) {
  const bytes = Buffer.from(hex, "hex");
  return bytes.subarray(24).toString("utf16le").split("\0").slice(0, 3).join(", ");
}

/** All values of a named property: by its number, eight digits, or its name. */
function named(raw, name) {
  return raw.filter((each) => each.propertyLid === name || each.propertyName === name).map(plain);
}

const kReadings = {
  series: (message) => series(message.apptRecur),
  recipients: (message) => message.recipients.map((each) => `${each.recipType}: ${each.name} <${each.smtpAddress}>`),
  prefix: (message, raw) => raw.find((each) => each.propertyTag === "003d001f")?.value,
  members: (message, raw, count) => named(raw, "00008055").slice(-count).map(oneOff),
  oneOffMembers: (message, raw, count) => named(raw, "00008054").slice(-count).map(oneOff),
};

/**
 * What the reader says to a fact's name: one of the readings, a field of its own, or a named property. Of a property
 * of several values it tells their lengths first, then each.
 */
function fact(name, expected, message, raw) {
  if (kReadings[name]) return kReadings[name](message, raw, expected?.length);
  if (name in message) return message[name];
  const values = named(raw, name);
  return Array.isArray(expected) ? values.slice(-expected.length) : values[0];
}

function read(file) {
  const reader = new MsgReader(fs.readFileSync(file));
  reader.parserConfig = { includeRawProps: true };
  const message = reader.getFileData();
  if (message.error) throw new Error(`${file}: ${message.error}`);
  return { file, message, raw: message.rawProps };
}

const files = new Map();
function messagesIn(folder) {
  if (!files.has(folder)) {
    const place = path.join(mailbox, folder);
    const names = fs.readdirSync(place).filter((each) => each.endsWith(".msg"));
    files.set(folder, names.sort().map((each) => read(path.join(place, each))));
  }
  return files.get(folder);
}

let differences = 0;
function differ(line) {
  console.log(line);
  ++differences;
}
for (const { folder, messageClass, subject, ...facts } of JSON.parse(fs.readFileSync(expectedFile, "utf8"))) {
  const what = `${folder}: ${messageClass} "${subject}"`;
  const found = messagesIn(folder).filter(
    ({ message }) => message.messageClass === messageClass && message.subject === subject,
  );
  if (found.length !== 1) {
    differ(`${what}: ${found.length} of them`);
    continue;
  }
  for (const [name, expected] of Object.entries(facts)) {
    const actual = fact(name, expected, found[0].message, found[0].raw);
    if (JSON.stringify(actual) !== JSON.stringify(expected)) {
      differ(`${what}: ${name} is ${JSON.stringify(actual)}, not ${JSON.stringify(expected)}`);
    }
  }
}
console.log(differences ? `${differences} differences` : "all as expected");
process.exitCode = differences ? 1 : 0;
