// The module for Node, as a backend's tests use it: installed, with a backend's client.

import assert from 'node:assert';
import { spawn } from 'node:child_process';
import { once } from 'node:events';
import { existsSync } from 'node:fs';
import { afterEach, beforeEach, test } from 'node:test';
import { Phone, PhoneError, Refused, WaitFailed } from 'quorvantis-push';
import { Notifier } from './notifier.mjs';

const OFFER = {
  aps: { alert: { title: 'Offers' }, type: 'pushlib-abrirurl', urlnoti: 'https://www.example.com/offers' },
};
function send(phone, token, payload) {
  const { port, ca, topic } = phone.apns;
  return new Notifier({ host: 'localhost', port, ca, topic }).send(token, payload);
}

let phone;
beforeEach(async () => { phone = await Phone.start({ apns: true }); });
afterEach(async () => { await phone.stop(); });

test('what a backend sends is shown and opens its link when tapped', async () => {
  await phone.register({ foreground: true });
  assert.equal(await send(phone, await phone.token(), OFFER), 200);
  await phone.tap(await phone.wait({ screen: 'banner' }));
  assert.equal((await phone.wait({ event: 'opened' })).url, 'https://www.example.com/offers');
});

test('a wait goes on after the last one, finds inner members, and shows what came instead', async () => {
  await phone.register();
  await phone.arrive({ aps: { alert: { title: 'Hello' }, badge: 3 } });
  await phone.arrive(OFFER);
  const found = await phone.wait({ event: 'callback', argument: { alert: { title: 'Offers' } } });
  assert.equal(found.argument.type, 'pushlib-abrirurl');
  await assert.rejects(phone.wait({ event: 'badge' }, { seconds: 0 }), (error) => {
    assert.ok(error instanceof WaitFailed);
    assert.match(error.message, /step {3}settle/);
    assert.doesNotMatch(error.message, /appHash/);
    return true;
  });
  await phone.fresh();
  assert.deepEqual(await phone.lines(), []);
});

test('a refusal and a tool that does not start say why', async () => {
  await phone.end();
  await assert.rejects(phone.register(), (error) => error instanceof Refused && error.status === 409);
  await assert.rejects(phone.tap(7), /not in the list/);
  await assert.rejects(Phone.start({ tool: '/nowhere/quorvantis-push' }), /QUORVANTIS_PUSH/);
  await assert.rejects(Phone.start({ server: '127.0.0.1:1' }), /--authority/);
  await assert.rejects(Phone.start({ apn: true }), /"apn"/);
});

test('it ends with the tests even when they are killed', async () => {
  const code = `import { Phone } from 'quorvantis-push';
    const phone = await Phone.start(); console.log(phone.address); setInterval(() => {}, 1000);`;
  const runner = spawn(process.execPath, ['--input-type=module', '--eval', code], { stdio: ['ignore', 'pipe', 'inherit'] });
  const [address] = await once(runner.stdout, 'data');
  runner.kill('SIGKILL');
  const { port } = new URL(String(address).trim());
  for (const until = Date.now() + 60_000; ;) {
    const answers = await fetch(`http://127.0.0.1:${port}/`).then(() => true, () => false);
    if (!answers) break;
    assert.ok(Date.now() < until, 'the phone goes on alone');
  }
});

test('strict makes a bad payload fail', async () => {
  const strict = await Phone.start({ apns: true, strict: true });
  await strict.register();
  assert.equal(await send(strict, await strict.token(), { aps: { alert: 'plain', type: 'pushlib-normal' } }), 200);
  assert.equal(await strict.stop(), 1);
  await assert.rejects(strict.play({ do: 'settle' }), PhoneError);
  assert.ok(!existsSync(strict.apns.authority));
});
