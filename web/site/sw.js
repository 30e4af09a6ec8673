// Keeps the whole site in the cache at the first visit and answers from it, so that the page works
// with the network off. The build fills in the files and a cache name made from their contents.
const CACHE = 'norvane-@CACHE_VERSION@';
const FILES = [@CACHE_FILES@];

self.addEventListener('install', event => {
  // Past the browser's HTTP cache, so that a new build never caches an old file.
  const fresh = FILES.map(f => new Request(f, {cache: 'reload'}));
  event.waitUntil(caches.open(CACHE).then(cache => cache.addAll(fresh)).then(() => self.skipWaiting()));
});

self.addEventListener('activate', event => {
  event.waitUntil(caches.keys()
    .then(names => Promise.all(names.filter(n => n.startsWith('norvane-') && n !== CACHE).map(n => caches.delete(n))))
    .then(() => self.clients.claim()));
});

self.addEventListener('fetch', event => {
  const request = event.request;
  if (request.method !== 'GET' || new URL(request.url).origin !== self.location.origin) return;
  event.respondWith(caches.open(CACHE).then(async cache => {
    const hit = await cache.match(request, {ignoreSearch: true}) ||
                (request.mode === 'navigate' ? await cache.match('./') : undefined);
    return hit || fetch(request);
  }));
});
