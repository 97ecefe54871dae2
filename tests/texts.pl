# texts.pl LUPDATE SRC LANGUAGES   Fails on a Czech text of the sources that does not go through translation, and on a
# text of all windows that a language lacks or knows under another name.
use strict; use warnings; use utf8; use open qw(:std :utf8);
use File::Find; use File::Temp;

# What is written into files or read from keys is the same in every language.
my %not_for_people = map { $_ => 1 } qw(store/CsvText.cpp sync/GoogleMerge.cpp sync/SyncFiles.cpp
  timetools/StopWatch.cpp timetools/MonthList.cpp platform/linux/LinuxShell.cpp);

my ($lupdate, $src, $languages) = @ARGV;
my $folder = File::Temp->newdir;
my $ts = "$folder/texts.ts";
system($lupdate, '-silent', $src, '-ts', $ts) == 0 or die "lupdate failed\n";
my %entity = (lt => '<', gt => '>', amp => '&', quot => '"', apos => "'");
my $all = slurp($ts);
my %translated;
for ($all =~ m{<source>(.*?)</source>}gs) { s/&(\w+);/$entity{$1}/g; $translated{$_} = 1 }
die "no text is translated\n" unless %translated;

my $wrong = 0;
my ($context) = $all =~ m{<name>Texts</name>(.*?)</context>}s;
my $shared = join "\n", sort { $a cmp $b } $context =~ m{<source>(.*?)</source>}gs;
for my $language (glob "$languages/*.ts") {
  my @known = slurp($language) =~ m{<source>(.*?)</source>\s*<translation>[^<]+<}gs;
  next if join("\n", sort { $a cmp $b } @known) eq $shared;
  print "$language has other texts than src/shell/Texts.cpp\n"; $wrong++;
}

my $literal = qr/(?:u8?)?"((?:[^"\\\n]|\\.)*)"(?:_qs)?/;
find({ no_chdir => 1, wanted => sub {
  return unless /\.(cpp|h)$/;
  my $file = substr $_, 1 + length $src;
  return if $not_for_people{$file};
  my $text = slurp($_);
  $text =~ s{^\s*//.*}{}mg;
  $text =~ s{\s//[^"\n]*$}{}mg;
  $text =~ s{'(?:\\.|[^'\\])'}{}g;
  $text =~ s{R"\(.*?\)"}{}gs;
  while ($text =~ /((?:$literal\s*)+)/g) {
    my $whole = join '', $1 =~ /$literal/g;
    next unless $whole =~ /[^\x00-\x7f]/;
    $whole =~ s/\\n/\n/g; $whole =~ s/\\"/"/g;
    next if $translated{$whole};
    print "$file: \"$whole\" is not translated\n"; $wrong++;
  }
} }, $src);
exit($wrong ? 1 : 0);

sub slurp { open my $in, '<', $_[0] or die "$_[0]: $!\n"; local $/; return scalar <$in> }
