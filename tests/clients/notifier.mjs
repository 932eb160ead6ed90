// A backend's own client for Apple's service, on Node's HTTP/2 alone.

import { generateKeyPairSync, sign } from 'node:crypto';
import { once } from 'node:events';
import { connect } from 'node:http2';

const { privateKey } = generateKeyPairSync('ec', { namedCurve: 'P-256' });

function providerToken() {
  const part = (value) => Buffer.from(JSON.stringify(value)).toString('base64url');
  const now = Math.floor(Date.now() / 1000);
  const signed = `${part({ alg: 'ES256', kid: 'ABC123DEFG' })}.${part({ iss: 'DEF123GHIJ', iat: now })}`;
  return `${signed}.${sign('sha256', signed, { key: privateKey, dsaEncoding: 'ieee-p1363' }).toString('base64url')}`;
}

export class Notifier {
  constructor({ host, port, ca, topic }) {
    Object.assign(this, { address: `https://${host}:${port}`, ca, topic });
  }

  /** The status that the service answers. */
  async send(token, payload) {
    const session = connect(this.address, { ca: this.ca });
    const request = session.request({
      ':method': 'POST', ':path': `/3/device/${token}`, authorization: `bearer ${providerToken()}`,
      'apns-topic': this.topic, 'apns-push-type': 'alert',
    });
    request.end(JSON.stringify(payload));
    const [headers] = await once(request, 'response');
    session.close();
    return headers[':status'];
  }

  sendOffer(token, url) {
    return this.send(token, { aps: { alert: { title: 'Offers' }, type: 'pushlib-abrirurl', urlnoti: url } });
  }
}
