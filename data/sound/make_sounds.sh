#!/bin/sh
# Makes the sounds of the program beside this script, the same bytes each time. Needs sox.
# Cues answer a key, so they are short; told apart by pitch, direction and timbre:
#   refused    two low dull beats            end    one high knock, falling     empty   one soft low knock
#   space      a very short soft bell        del    a tick                      tick    a lighter tick for progress
#   alarm      a two-tone call               timer  a quick triple beep         clockbeat  a long bell stroke
#   start      a short rising tone; its format is that of voice notes
set -e
cd "$(dirname "$0")"
make() { # NAME then the arguments of sox after the output file
  name=$1; shift
  sox -D -R -n -r 44100 -b 16 -c 1 "$name.wav" "$@"
}
make refused   synth 0.045 triangle 175 synth 0.045 sine amod 90 vol 0.55 fade t 0.003 0 0.012 pad 0 0.02 repeat 1
make end       synth 0.09 sine 1250-620 vol 0.4 fade t 0.002 0 0.05
make empty     synth 0.08 sine 260-210 vol 0.5 fade t 0.003 0 0.05
make space     synth 0.07 sine 1568 sine 3136 sine 4710 remix 1v0.5,2v0.22,3v0.10 vol 0.35 fade t 0.001 0 0.065
make del       synth 0.012 whitenoise vol 0.4 highpass 2500 lowpass 7000 fade t 0.001 0 0.009
make tick      synth 0.018 sine 2000 vol 0.25 fade t 0.001 0 0.014
make clockbeat synth 1.1 sine 523 sine 1046 sine 1570 remix 1v0.5,2v0.22,3v0.10 vol 0.6 fade t 0.002 0 1.0
make start     synth 0.12 sine 500-1000 vol 0.4 fade t 0.005 0 0.03

# The two calls are put together from single notes.
note() { sox -D -R -n -r 44100 -b 16 -c 1 "$1" synth "$2" sine "$3" sine "$4" remix 1v0.6,2v0.25 vol 0.6 fade t 0.005 0 0.04; }
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
note "$scratch/high.wav" 0.28 880 1760
note "$scratch/low.wav" 0.28 660 1320
sox -D -R "$scratch/high.wav" "$scratch/low.wav" "$scratch/high.wav" "$scratch/low.wav" alarm.wav pad 0 0.12
note "$scratch/beep.wav" 0.1 1320 2640
sox -D -R "$scratch/beep.wav" "$scratch/gap.wav" pad 0 0.06
sox -D -R "$scratch/gap.wav" "$scratch/gap.wav" "$scratch/gap.wav" timer.wav pad 0 0.4
