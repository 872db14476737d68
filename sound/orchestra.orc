; The toy-box orchestra. Every instrument takes the same parameters:
;   p4 level in dB    p5 pitch in Hz    p6 pitch it glides to in Hz    p7 pan, -1 left to 1 right
;   p8 room, 0 dry to 1    p9 colour, 0 dark to 1 bright (what it does is said at each instrument)    p10 glide time in s
; An instrument ends with Send, which places it in the picture; "master" at the end of the file adds the room and plays it.
; Random numbers depend on the start time alone, so that every rendering gives the same bytes.

sr = 48000
ksmps = 32
nchnls = $CHANNELS
0dbfs = 1
seed 1

gaLeft init 0
gaRight init 0
gaRoom init 0

; single cycles of a reed, a brass mouthpiece and a plucked string (amplitudes of the harmonics)
giSine ftgen 0, 0, 8192, 10, 1
giReed ftgen 0, 0, 8192, 10, 1, .62, .5, .42, .3, .22, .2, .14, .1, .08, .06, .04
giSoftReed ftgen 0, 0, 8192, 10, 1, .25, .45, .1, .22, .05, .1, .02, .04
giBrass ftgen 0, 0, 8192, 10, 1, .8, .62, .45, .3, .2, .13, .09, .06
giString ftgen 0, 0, 8192, 10, 1, .7, .45, .28, .2, .1, .08, .06, .04, .02

; Csound does not hand the parameters of a note on to opcodes: they are given explicitly.

; Places a sound in the picture.
opcode Send, 0, aiii
  aSound, iLevel, iPan, iRoom xin
  aSound *= ampdbfs(iLevel)
  iAngle = (iPan + 1) * $M_PI / 4
  gaLeft += aSound * cos(iAngle)
  gaRight += aSound * sin(iAngle)
  gaRoom += aSound * iRoom
endop

; Pitch now: glides from the first to the second within iTime seconds, evenly in semitones.
opcode Pitch, k, iii
  iFrom, iTo, iTime xin
  kAlong linseg 0, max(iTime, .001), 1, 1, 1
  xout iFrom * (iTo / iFrom) ^ kAlong
endop

; A soft-edged decay: rises within iAttack, then falls by 60 dB in iTime.
opcode Ring, a, ii
  iAttack, iTime xin
  aRing expseg 1, iTime, .001, 1, .0001
  aEdge linseg 0, iAttack, 1, 1, 1
  xout aRing * aEdge
endop

; White noise that is another one at each start time and pitch.
opcode Noise, a, ii
  iStart, iPitch xin
  aNoise rand 1, frac(iStart * 7.317 + iPitch * .0137 + .211), 1
  xout aNoise
endop

;--- tuned instruments -------------------------------------------------------------------------------------------------

; Squeezebox: three reeds a little apart, bellows that press into each note. Colour opens the reeds.
instr accordion
  kPitch Pitch p5, p6, p10
  aBellows linsegr 0, .018, .8, .09, 1, .5, .82, .07, 0
  kBeat oscili .05, 4.6, giSine, frac(p2 * .37)
  aMiddle oscili .5, kPitch, giReed
  aSharp oscili .38, kPitch * 1.0042, giReed, .3
  aLow oscili .3, kPitch * .4994, giSoftReed, .6
  aReeds = (aMiddle + aSharp + aLow) * aBellows * (1 + kBeat)
  aTone butterlp aReeds, 1500 + 5200 * p9
  aTone butterhp aTone, 120
  Send aTone * .42, p4, p7, p8
endin

; Tin whistle: breath first, then the tone, a vibrato that comes late. Colour is the amount of breath.
instr whistle
  kPitch Pitch p5, p6, p10
  kDepth linseg 0, .18, 0, .25, .0065, 1, .0065
  kVibrato oscili kDepth, 5.4, giSine
  aBlow linsegr 0, .022, 1, .06, .85, .6, .75, .05, 0
  kHz = kPitch * (1 + kVibrato)
  aOne oscili .8, kHz, giSine
  aTwo oscili .16, kHz * 2, giSine
  aThree oscili .07, kHz * 3, giSine
  aBreath Noise p2, p5
  aBreath butterbp aBreath, kPitch * 1.5, kPitch * .8
  aChiff expseg 1, .07, .12, 1, .12
  Send (aOne + aTwo + aThree + aBreath * aChiff * (.12 + .5 * p9)) * aBlow * .5, p4, p7, p8
endin

; Ukulele: a plucked nylon string on a small box. Colour is how near the bridge it is plucked.
instr ukulele
  iRing = 1.5 * (260 / p5) ^ .35
  p3 = iRing + .05
  aString pluck 1, p5, p5, giString, 1
  aDark butterlp aString, p5 * (2.5 + 9 * p9)
  aRing Ring .0015, iRing
  aBox reson aDark, 410, 120, 2
  aNail Noise p2, p5
  aNail butterbp aNail, 2600, 1500
  aTick expseg 1, .012, .001, 1, .001
  Send (aDark * .8 + aBox * .12) * aRing * .6 + aNail * aTick * .05, p4, p7, p8
endin

; Plucked bass of a tea chest: round, short. Colour brings out the string.
instr bass
  iRing = max(p3 * 1.1, .25)
  p3 = iRing + .1
  kPitch Pitch p5, p6, p10
  aString pluck 1, p5, p5, giString, 1
  aString butterlp aString, 380 + 1400 * p9
  aBelly oscili 1, kPitch, giSine
  aBelly2 oscili .35, kPitch * 2, giSine
  aBody linseg 0, .006, 1, iRing * .35, .75, iRing * .5, .25, .06, 0, 1, 0
  Send (aString * .45 + (aBelly + aBelly2) * .55) * aBody * .8, p4, p7, p8
endin

; Tuba: lips that open with each note. Colour opens the bell.
instr tuba
  kPitch Pitch p5, p6, p10
  aLips linsegr 0, .028, 1, .08, .8, 1, .7, .06, 0
  kOpen linsegr .3, .04, 1, .12, .6, 1, .5, .06, .2
  aTone oscili .9, kPitch, giBrass
  aTone butterlp aTone, p5 * (2.2 + (3 + 6 * p9) * kOpen)
  Send aTone * aLips * .6, p4, p7, p8
endin

; Toy trumpet for fanfares. Colour opens the bell.
instr trumpet
  kPitch Pitch p5, p6, p10
  aLips linsegr 0, .016, 1, .06, .78, .5, .86, .05, 0
  kOpen linsegr .2, .03, 1, .1, .7, 1, .8, .05, .2
  kDepth linseg 0, .2, 0, .2, .005, 1, .005
  kVibrato oscili kDepth, 5.7, giSine
  aTone oscili .8, kPitch * (1 + kVibrato), giReed
  aTone butterlp aTone, p5 * (1.5 + (2 + 6 * p9) * kOpen)
  Send aTone * aLips * .5, p4, p7, p8
endin

; Marimba: a wooden bar over its pipe; partials 1 : 3.93 : 9.6 of a tuned bar. Colour is the hardness of the mallet.
instr marimba
  iRing = 1.3 * (220 / p5) ^ .4
  p3 = iRing + .05
  kPitch Pitch p5, p6, p10
  aBar Ring .002, iRing
  aBar3 Ring .001, iRing * .22
  aBar9 Ring .001, iRing * .06
  aOne oscili 1, kPitch, giSine
  aThree oscili .28 + .3 * p9, kPitch * 3.93, giSine
  aNine oscili .1 + .25 * p9, min(kPitch * 9.6, 16000), giSine
  aMallet Noise p2, p5
  aMallet butterbp aMallet, 900 + 1800 * p9, 900
  aTap expseg 1, .018, .001, 1, .001
  Send (aOne * aBar + aThree * aBar3 + aNine * aBar9 + aMallet * aTap * .25) * .6, p4, p7, p8
endin

; Steel pan: the octave answers the note, its pitch settles in the first instant. Colour strengthens the upper notes.
instr pan
  iRing = 1.5 * (330 / p5) ^ .3
  p3 = iRing + .05
  kSettle expseg 1.012, .05, 1.0001, 1, 1
  kPitch Pitch p5, p6, p10
  kHz = kPitch * kSettle
  aNote Ring .004, iRing
  aOctave linseg 0, .035, 1, iRing * .4, .3, iRing * .5, 0, 1, 0
  aHigh Ring .002, iRing * .28
  aOne oscili 1, kHz, giSine
  aTwo oscili .42 + .2 * p9, kHz * 2.004, giSine, .2
  aThree oscili .16 + .2 * p9, kHz * 3.01, giSine
  aFour oscili .1 + .2 * p9, kHz * 4.14, giSine
  Send (aOne * aNote + aTwo * aOctave * aNote + (aThree + aFour) * aHigh) * .55, p4, p7, p8
endin

; Toy piano: short steel rods struck by a plastic hammer; partials of a bar held at one end. Colour is the hammer.
instr toypiano
  iRing = 1.4 * (520 / p5) ^ .3
  p3 = iRing + .05
  aRod Ring .0015, iRing
  aRod2 Ring .001, iRing * .35
  aRod3 Ring .001, iRing * .12
  aOne oscili 1, p5, giSine
  aTwo oscili .35 + .3 * p9, min(p5 * 2.92, 15000), giSine
  aThree oscili .18 + .3 * p9, min(p5 * 5.41, 16000), giSine
  aHammer Noise p2, p5
  aHammer butterbp aHammer, 1700, 1200
  aTap expseg 1, .014, .001, 1, .001
  Send (aOne * aRod + aTwo * aRod2 + aThree * aRod3 + aHammer * aTap * .3) * .5, p4, p7, p8
endin

; Glockenspiel: free bars of steel, 1 : 2.76 : 5.4. Colour is the hardness of the beater.
instr glock
  iRing = 2.2 * (1000 / p5) ^ .3
  p3 = iRing + .05
  aBar Ring .0015, iRing
  aBar2 Ring .001, iRing * .3
  aBar3 Ring .001, iRing * .1
  aOne oscili 1, p5, giSine
  aTwo oscili .2 + .3 * p9, min(p5 * 2.756, 15000), giSine
  aThree oscili .08 + .22 * p9, min(p5 * 5.404, 16000), giSine
  Send (aOne * aBar + aTwo * aBar2 + aThree * aBar3) * .45, p4, p7, p8
endin

; Ship's bell: hum, strike, minor third, fifth, octave and above, each ringing its own time. Colour is the clapper.
instr shipbell
  iRing = 2.6
  p3 = iRing + .05
  aHum Ring .004, iRing
  aStrike Ring .002, iRing * .6
  aHigh Ring .001, iRing * .25
  aOne oscili .5, p5 * .5, giSine
  aTwo oscili 1, p5, giSine
  aThird oscili .5, p5 * 1.19, giSine
  aFifth oscili .3, p5 * 1.5, giSine
  aOctave oscili .6, p5 * 2.01, giSine
  aTwelfth oscili .2 + .3 * p9, p5 * 2.66, giSine
  aTop oscili .15 + .3 * p9, p5 * 4.1, giSine
  Send (aOne * aHum + (aTwo + aThird) * aStrike + (aFifth + aOctave + aTwelfth + aTop) * aHigh) * .35, p4, p7, p8
endin

;--- drums (their pitch is given by the tune, so that they too can be tuned) ---------------------------------------------

; Kick: a falling sine and the tap of the beater. Colour is the tap.
instr kick
  p3 = .34
  kFall expseg 2.6, .045, 1.15, .25, 1
  aSkin oscili 1, p5 * kFall, giSine
  aRing linseg 0, .002, 1, .05, .8, .25, 0, 1, 0
  aTap Noise p2, p5
  aTap butterlp aTap, 1200 + 2500 * p9
  aTick expseg 1, .014, .001, 1, .001
  Send aSkin * aRing * .9 + aTap * aTick * .35, p4, p7, p8
endin

; Side drum: skin and rattling snares. Colour is the snares.
instr snare
  p3 = .45
  aRattle Noise p2, p5
  aRattle butterbp aRattle, 3600, 4200
  aRattle butterhp aRattle, 700
  aTail Ring .001, .22 + .36 * p9
  aSkin oscili .6, p5, giSine
  aSkin2 oscili .35, p5 * 1.59, giSine
  aTap Ring .001, .2
  Send aRattle * aTail * (.8 + .9 * p9) + (aSkin + aSkin2) * aTap * .5, p4, p7, p8
endin

; Hat of two brass lids. Colour lets it ring.
instr hat
  iRing = .09 + .6 * p9
  p3 = iRing + .02
  aHiss Noise p2, p5
  aHiss butterhp aHiss, 6800
  aMetal vco2 .3, 3170, 2, .5
  aMetal2 vco2 .3, 4630, 2, .5
  aMetal butterhp aMetal + aMetal2, 6000
  aRing Ring .001, iRing
  Send (aHiss + aMetal) * aRing * 1.2, p4, p7, p8
endin

; Shaker of sand: it swells, then stops. Colour is the grain.
instr shaker
  p3 = .14
  aSand Noise p2, p5
  aSand butterbp aSand, 4500 + 4000 * p9, 3500
  aSwing linseg 0, .035, 1, .07, 0, 1, 0
  Send aSand * aSwing * 2, p4, p7, p8
endin

; Tambourine: skin and jingles.
instr tambourine
  p3 = .4
  aHiss Noise p2, p5
  aJingle butterbp aHiss, 8200, 2600
  aJingle2 butterbp aHiss, 5600, 500
  aRing Ring .002, .2 + .25 * p9
  Send (aJingle * .7 + aJingle2 * 1.2) * aRing * 2, p4, p7, p8
endin

; Hands of the crew: four claps that are not quite together.
instr clap
  p3 = .28
  aHands Noise p2, p5
  aHands butterbp aHands, 1250, 1000
  aHands2 Noise p2, p5
  aHands2 butterhp aHands2, 1800
  aClaps linseg 0, .001, 1, .009, .12, .001, .9, .009, .12, .001, .8, .011, .15, .001, .9, .04, .25, .12, 0, 1, 0
  Send (aHands * 1.3 + aHands2 * .2) * aClaps * 1.6, p4, p7, p8
endin

; Woodblock: two hollow tones.
instr woodblock
  p3 = .16
  aHigh Ring .001, .14
  aOne oscili .8, p5, giSine
  aTwo oscili .5, p5 * 1.47, giSine
  aThree oscili .25, p5 * 3.1, giSine
  Send (aOne + aTwo + aThree) * aHigh, p4, p7, p8
endin

; Hand drum or tom: colour from palm to fingertip.
instr handdrum
  iRing = .3 + .4 * (1 - p9)
  p3 = iRing + .02
  kFall expseg 1.22, .04, 1.02, .3, 1
  aSkin oscili 1, p5 * kFall, giSine
  aSkin2 oscili .4 * p9 + .1, p5 * kFall * 1.59, giSine
  aRing Ring .002, iRing
  aPalm Noise p2, p5
  aPalm butterbp aPalm, 700 + 1800 * p9, 900
  aTap expseg 1, .02, .001, 1, .001
  Send (aSkin + aSkin2) * aRing * .7 + aPalm * aTap * .3, p4, p7, p8
endin

; Boots on the planks.
instr stomp
  p3 = .3
  kFall expseg 1.6, .03, 1, .3, 1
  aPlank oscili 1, p5 * kFall, giSine
  aPlank2 oscili .5, p5 * 2.3 * kFall, giSine
  aThud Ring .002, .24
  aSole Noise p2, p5
  aSole butterlp aSole, 1600
  aTap expseg 1, .05, .001, 1, .001
  Send (aPlank + aPlank2) * aThud * .6 + aSole * aTap * .5, p4, p7, p8
endin

; A brass lid that is struck and rings away.
instr cymbal
  iRing = .8 + 1.6 * p9
  p3 = iRing + .05
  aHiss Noise p2, p5
  aHiss butterhp aHiss, 4200
  aLow butterbp aHiss, 5200, 1600
  aRing linseg 0, .004, 1, iRing * .15, .4, iRing * .8, 0, 1, 0
  Send (aHiss * .5 + aLow * .4) * aRing * aRing * 1.4, p4, p7, p8
endin

;--- what effects are made of ----------------------------------------------------------------------------------------------

; A bubble that is set free: the pitch rises as it shrinks. Colour 0 is a big soft one, 1 a crisp one.
instr bubble
  kPitch Pitch p5, p6, p10
  aDrop oscili 1, kPitch, giSine
  aDrop2 oscili .12, kPitch * 2, giSine
  iAttack = .014 - .01 * p9
  aSkin linseg 0, iAttack, 1, p3 * .35, .7, p3 * .65 - iAttack, 0, 1, 0
  Send (aDrop + aDrop2) * aSkin * .7, p4, p7, p8
endin

; Rubber that is bumped: a bent tone with a wobble. Colour makes it squeak.
instr rubber
  kPitch Pitch p5, p6, p10
  kBend expseg 1 + 3 * p9, p3 * .6, .2, p3, .1
  aWobble oscili kPitch * kBend, kPitch * .5, giSine
  aTone oscili 1, kPitch + aWobble, giSine
  aSkin linseg 0, .009, 1, p3 * .25, .6, p3 * .7, 0, 1, 0
  aTone butterlp aTone, 3800
  Send aTone * aSkin * .6, p4, p7, p8
endin

; A balloon's neck or a rubber string under tension. Colour opens the mouth while the pitch glides.
instr squeak
  kPitch Pitch p5, p6, p10
  kShiver randi .012, 31, frac(p2 * .71 + .13)
  aBuzz vco2 .7, kPitch * (1 + kShiver), 4, .3
  kMouth linseg 700, p3 * .7, 1500 + 4500 * p9, p3, 900
  aTone butterlp aBuzz, kMouth
  aThroat reson aTone, kPitch * 3.02, kPitch * .6, 2
  aSkin linseg 0, .025, 1, max(p3 - .075, .01), .9, .05, 0, 1, 0
  Send (aTone * .5 + aThroat * .12) * aSkin, p4, p7, p8
endin

; Air: noise through a moving window from p5 to p6. Colour narrows the window to a whistle.
instr air
  kPitch Pitch p5, p6, p10
  aNoise Noise p2, p5
  aAir butterbp aNoise, kPitch, kPitch * (1.1 - .95 * p9)
  aAir butterbp aAir, kPitch, kPitch * (1.3 - .95 * p9)
  aBreath linseg 0, p3 * .25, 1, p3 * .35, .55, p3 * .4, 0, 1, 0
  Send aAir * aBreath * (1 + 2.5 * p9), p4, p7, p8
endin

; A burst of air or water: like air, but it starts at once.
instr splash
  kPitch Pitch p5, p6, p10
  aNoise Noise p2, p5
  aWater butterbp aNoise, kPitch, kPitch * 1.2
  aFoam butterhp aNoise, 5000
  aFall Ring .003, p3
  aFall2 Ring .012, p3 * .7
  Send (aWater * aFall + aFoam * aFall2 * .3 * p9) * .8, p4, p7, p8
endin

; Sand: thousands of grains. Colour is their size, small to large.
instr sand
  kPitch Pitch p5, p6, p10
  kThin expseg 2600, p3, 150
  aGrains dust2 1, kThin
  aGrain butterbp aGrains, kPitch, kPitch * .7
  aGrain2 butterbp aGrains, kPitch * 2.1, kPitch
  aNoise Noise p2, p5
  aBed butterbp aNoise, kPitch * 1.4, kPitch
  aFall linseg 0, .006, 1, p3 * .25, .45, p3 * .7, 0, 1, 0
  Send ((aGrain + aGrain2) * (2.2 + 3 * p9) + aBed * .5) * aFall * .7, p4, p7, p8
endin

; One link of a chain: inharmonic iron. Colour is how long it rings.
instr link
  iRing = .08 + .5 * p9
  p3 = iRing + .02
  aLong Ring .0012, iRing
  aShort Ring .0008, iRing * .35
  aOne oscili .6, p5, giSine
  aTwo oscili .8, p5 * 1.483, giSine
  aThree oscili .6, p5 * 2.132, giSine
  aFour oscili .5, p5 * 2.907, giSine
  aFive oscili .35, p5 * 4.13, giSine
  aScrape Noise p2, p5
  aScrape butterbp aScrape, 5200, 3000
  aTap expseg 1, .012, .001, 1, .001
  Send (aOne + aTwo) * aLong * .28 + (aThree + aFour + aFive) * aShort * .28 + aScrape * aTap * .3, p4, p7, p8
endin

; Lips or a valve that flutter: a pulsed breath. The pitch is that of the flutter. Colour is the sharpness.
instr flutter
  kPitch Pitch p5, p6, p10
  kShiver randi .12, 23, frac(p2 * .57 + .29)
  aPulse vco2 .5, kPitch * (1 + kShiver), 2, .25
  aPulse butterlp aPulse + .5, 500 + 2500 * p9
  aNoise Noise p2, p5
  aAir butterbp aNoise, 900 + 1400 * p9, 1100
  aLip reson aPulse, 620 + 500 * p9, 160, 2
  aBreath linseg 0, .03, 1, p3 * .6, .7, p3 * .4 - .03, 0, 1, 0
  aSound = aPulse * aAir * 1.1 + aLip * .18
  aSound butterhp aSound, 90
  Send aSound * aBreath, p4, p7, p8
endin

; A big friendly voice: glottis and four formants that move from "h" over "o" towards "u". Colour 1 is "a".
instr voice
  kPitch Pitch p5, p6, p10
  kVibrato oscili .012, 6.1, giSine
  aFolds vco2 .8, kPitch * (1 + kVibrato), 0
  aHush Noise p2, p5
  kMouth linseg 1, p3 * .5, .75, p3 * .5, .5
  iOpen = 1 + .9 * p9
  aFirst reson aFolds + aHush * .05, 430 * iOpen * kMouth, 70, 2
  aSecond reson aFolds + aHush * .12, 800 * (1 + .4 * p9) * kMouth, 90, 2
  aThird reson aFolds + aHush * .1, 2500, 180, 2
  aFourth reson aFolds, 3300, 220, 2
  aBlow linseg 0, .03, 1, p3 * .4, .8, p3 * .6 - .03, 0, 1, 0
  aSung = (aFirst + aSecond * .6 + aThird * .14 + aFourth * .06) * aBlow
  aPuff butterbp aHush, 1100, 900
  aPuffs expseg .5, .07, .001, 1, .001
  Send aSung * .3 + aPuff * aPuffs * .5, p4, p7, p8
endin

; A low swell under water: sines an octave apart. Colour adds the upper one.
instr swell
  kPitch Pitch p5, p6, p10
  aDeep oscili 1, kPitch, giSine
  aUpper oscili p9, kPitch * 2, giSine
  aRise linseg 0, .012, 1, p3 * .3, .6, p3 * .65, 0, 1, 0
  aWarm = tanh((aDeep + aUpper) * 1.4) * .7
  Send aWarm * aRise, p4, p7, p8
endin

; A pure tone that trembles, ever faster. Colour is the depth of the trembling.
instr tremble
  kPitch Pitch p5, p6, p10
  kRate linseg 7, p3, 22
  kTremble oscili .5 * p9, kRate, giSine
  aOne oscili .7, kPitch, giSoftReed
  aTwo oscili .35, kPitch * 1.5, giSine
  kOpen linseg 500, p3 * .9, 4200, p3, 4200
  aTone butterlp aOne + aTwo, kOpen
  aGrow linseg 0, .03, .35, p3 * .85, 1, p3 * .15 - .03, 0, 1, 0
  Send aTone * aGrow * (1 - .5 * p9 + kTremble), p4, p7, p8
endin

;--- the room --------------------------------------------------------------------------------------------------------------

; p4: gain in dB of the whole.  p5: size of the room, 0 to 1.  p6: drive into the soft ceiling, dB.
instr 999
  aWetLeft, aWetRight reverbsc gaRoom, gaRoom, .55 + .35 * p5, 7500
  aLeft = gaLeft + butterhp(aWetLeft, 180) * .6
  aRight = gaRight + butterhp(aWetRight, 180) * .6
  aLeft butterhp aLeft, 18
  aRight butterhp aRight, 18
  iDrive = ampdbfs(p6)
  aLeft = tanh(aLeft * iDrive) * ampdbfs(p4)
  aRight = tanh(aRight * iDrive) * ampdbfs(p4)
  if nchnls == 2 then
    outs aLeft, aRight
  else
    out (aLeft + aRight) * .7071
  endif
  gaLeft = 0
  gaRight = 0
  gaRoom = 0
endin
